#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "vetlo/host/kept_store.h"

namespace quillmarsh {

// A command has printed what it could, and something was left out of it. Each line tells the user
// of one failure, and the command has failed.
class LeftOut : public std::exception {
 public:
  explicit LeftOut(std::vector<std::string> lines) : lines_(std::move(lines)) {}

  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  [[nodiscard]] const char* what() const noexcept override { return "something was left out"; }

 private:
  std::vector<std::string> lines_;
};

// "there is not enough memory (failure 7)".
std::string FailureLine(std::int32_t number, const char* text);

// A line for each failure that the store has kept.
std::vector<std::string> LinesOf(const vetlo::KeptStore& store);

// Whether a failure of this number is one of the store or of the machine rather than of a value in
// it.
bool IsOfTheStore(std::int32_t number);

// To be asked when all is printed: fails with LeftOut where the store has kept any failure.
void RequireWhole(const vetlo::KeptStore& store);

}  // namespace quillmarsh
