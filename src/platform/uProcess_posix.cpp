#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/uProcess.h"

extern char** environ;

std::filesystem::path ThisProgram() {
  return "/proc/self/exe";
}

int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::stop_token& stop) {
  std::vector<char*> words = {const_cast<char*>(program.c_str())};  // the call does not change them
  for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int failed = posix_spawn(&child, program.c_str(), &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failed != 0) throw std::system_error(failed, std::generic_category());
  {
    const std::stop_callback killer(stop, [child] { kill(child, SIGKILL); });
    // Waits but leaves the number to the child, so that no other process is killed.
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT) == -1 && errno == EINTR) {
    }
  }
  int status = 0;
  while (waitpid(child, &status, 0) == -1) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category());
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
