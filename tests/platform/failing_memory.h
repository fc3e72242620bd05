#pragma once

namespace vetlo {

// While one lives, the n-th allocation from its making on fails, counted from 1, and no other.
class FailingMemory {
 public:
  explicit FailingMemory(int n);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  // Whether the n-th allocation was reached.
  [[nodiscard]] bool Failed() const;
};

}  // namespace vetlo
