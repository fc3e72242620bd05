#include <csignal>
#include <iostream>

#include "quillmarsh/cli/command_line.h"

int main(int argc, char** argv) {
  // A file that may grow no further is a failure to write, not the end of the program.
  std::signal(SIGXFSZ, SIG_IGN);
  return quillmarsh::RunCommandLine(argc, argv, std::cout, std::cerr);
}
