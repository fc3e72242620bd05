#include <iostream>

#include "quillmarsh/cli/command_line.h"

int main(int argc, char** argv) {
  return quillmarsh::RunCommandLine(argc, argv, std::cout, std::cerr);
}
