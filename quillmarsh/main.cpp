#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "quillmarsh/cli/command_line.h"
#include "quillmarsh/cli/out_of_memory.h"
#include "quillmarsh/cli/user_error.h"

namespace {

// No file that is opened later may come to stand in the place of a standard stream that is closed.
// Using the stream goes on failing.
void KeepClosedStreamsClosed() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) == -1) {
      open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);  // takes the lowest number
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  KeepClosedStreamsClosed();
  // A file that may grow no further is a failure to write, not the end of the program.
  std::signal(SIGXFSZ, SIG_IGN);
  const int status = quillmarsh::RunCommandLine(argc, argv, std::cout, std::cerr);
  if (status == quillmarsh::kExitDone && quillmarsh::MemoryRanOut()) {
    quillmarsh::TellMemoryRanOut();
    return quillmarsh::kExitFailed;
  }
  return status;
}
