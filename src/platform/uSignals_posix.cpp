#include "platform/uSignals.h"

#include <csignal>

// A signal that is ignored would stay so in programs that are started, one with a handler does not.
void SurviveFileSizeLimit() {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  sigaction(SIGXFSZ, &action, nullptr);
}
