#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

#include "vetlo/platform/failure.h"

namespace vetlo {

// Holds where the piece fails with that very number.
template <typename Piece>
::testing::AssertionResult Raises(FailureNumber number, Piece&& piece) {
  const std::int32_t raised = ResumeNext(std::forward<Piece>(piece));
  if (raised == static_cast<std::int32_t>(number)) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure()
         << "raised " << raised << " instead of " << static_cast<std::int32_t>(number);
}

}  // namespace vetlo
