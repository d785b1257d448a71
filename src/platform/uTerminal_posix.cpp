#include <unistd.h>

#include "platform/uTerminal.h"

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) != 0;
}
