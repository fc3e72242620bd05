#include <csignal>
#include <iostream>

#include "quillmarsh/cli/command_line.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/out_of_memory.h"

int main(int argc, char** argv) {
  // A file that may grow no further is a failure to write, not the end of the program.
  std::signal(SIGXFSZ, SIG_IGN);
  const int status = quillmarsh::RunCommandLine(argc, argv, std::cout, std::cerr);
  if (status == quillmarsh::kExitDone && quillmarsh::MemoryRanOut()) {
    quillmarsh::TellMemoryRanOut();
    return quillmarsh::kExitFailed;
  }
  return status;
}
