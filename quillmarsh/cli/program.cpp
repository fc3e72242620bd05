#include "quillmarsh/cli/program.h"

namespace quillmarsh {

void AddExample(CLI::App& command, const std::string& words) {
  command.footer("Example:  quillmarsh " + words + "\n");
}

void AddParameters(CLI::App& command, std::optional<std::string>& first,
                   std::optional<std::string>& second) {
  command.add_option("--parameter1", first, "the subject of a history, such as an account number");
  command.add_option("--parameter2", second, "the second subject, such as a sub-category number");
}

}  // namespace quillmarsh
