#pragma once

#include <string>

#include "vetlo/platform/failure.h"
#include "vetlo/surface/unknown.h"

namespace vetlo {

// A failure's number as the code that an operation gives back, and the number again of such a
// code. Numbers below zero are codes already; those of 16 bits travel in the facility of run-time
// failures, so that 3021 is 0x800A0BCD.
HRESULT ResultOfFailure(std::int32_t number);
std::int32_t FailureOfResult(HRESULT result);

// "0x80040111".
std::string ResultText(HRESULT result);

// "{A88191EF-1604-46AA-AB2F-10F71C9C165B}".
std::string GuidText(const GUID& guid);

}  // namespace vetlo
