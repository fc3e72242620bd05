#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <string>
#include <utility>

namespace vetlo {

// The numbers by which this component and its surroundings name what went wrong.
enum class FailureNumber : std::int32_t {
  kInvalidCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kDivisionByZero = 11,
  kTypeMismatch = 13,
  kInternalError = 51,
  kObjectNotSet = 91,
  kInvalidUseOfNull = 94,
  kNoPrinter = 482,
  kTableNotFound = 3011,
  kNoCurrentRecord = 3021,
  kStoreUnusable = 3043,
  kBadSqlText = 3075,
  kNoSuchColumn = 3265,
  kObjectClosed = 3420,
  // Raised by the component itself where a request has no answer; it carries no text.
  kNothingToShow = static_cast<std::int32_t>(0x80040201),
  // The store takes no further favourite.
  kTooManyFavorites = static_cast<std::int32_t>(0x80040210),
};

// A run-time failure: a number, and for the host's eyes a text that may be empty.
class Failure : public std::exception {
 public:
  explicit Failure(FailureNumber number, std::string text = {})
      : number_(static_cast<std::int32_t>(number)), text_(std::move(text)) {}

  [[nodiscard]] std::int32_t number() const { return number_; }
  [[nodiscard]] const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::int32_t number_;
  std::string text_;
};

// Runs one piece of a routine in which a failure does not stop the routine.
// The answer is the failure's number, 0 for success.
template <typename Piece>
std::int32_t ResumeNext(Piece&& piece) {
  try {
    std::forward<Piece>(piece)();
    return 0;
  } catch (const Failure& failure) {
    return failure.number();
  } catch (const std::bad_alloc&) {
    return static_cast<std::int32_t>(FailureNumber::kOutOfMemory);
  } catch (...) {
    return static_cast<std::int32_t>(FailureNumber::kInternalError);
  }
}

}  // namespace vetlo
