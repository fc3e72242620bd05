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
  kDuplicateKey = 3022,
  kStoreUnusable = 3043,
  kBadSqlText = 3075,
  kNoSuchColumn = 3265,
  kObjectClosed = 3420,
  // Raised by the component itself where a request has no answer.
  kNothingToShow = static_cast<std::int32_t>(0x80040201),
  // The store takes no further favourite.
  kTooManyFavorites = static_cast<std::int32_t>(0x80040210),
};

// What a failure of this number says where nobody said more. Like the text of any failure it is one
// line for a user: what is wrong and, behind a semicolon, what he can do where he can do something.
const char* MeaningOf(std::int32_t number) noexcept;

// A run-time failure: a number, and for the host's eyes a text.
class Failure : public std::exception {
 public:
  explicit Failure(FailureNumber number, std::string text = {})
      : number_(static_cast<std::int32_t>(number)), text_(std::move(text)) {}

  [[nodiscard]] std::int32_t number() const { return number_; }
  // Whether somebody has said more than the number does.
  [[nodiscard]] bool HasText() const { return !text_.empty(); }
  // The text that it was raised with, or where there was none what its number means.
  [[nodiscard]] const char* what() const noexcept override {
    return text_.empty() ? MeaningOf(number_) : text_.c_str();
  }

 private:
  std::int32_t number_;
  std::string text_;
};

// The failure of what was asked for and is not there: no row to show, no price, no holding, no
// printer. Nothing went wrong, and whoever goes on after it has left nothing out.
class NothingThere : public Failure {
 public:
  using Failure::Failure;
};

// Who hears of the failures that a routine goes on after.
class FailureListener {
 public:
  virtual void OnFailure(std::int32_t number, const char* text) noexcept = 0;

 protected:
  ~FailureListener() = default;
};

// Runs one piece of a routine in which a failure does not stop the routine.
// The answer is the failure's number, 0 for success. The listener hears of the failure, unless it
// was that there is nothing.
template <typename Piece>
std::int32_t ResumeNext(FailureListener& listener, Piece&& piece) {
  const auto told = [&listener](std::int32_t number, const char* text) {
    listener.OnFailure(number, text);
    return number;
  };
  try {
    std::forward<Piece>(piece)();
    return 0;
  } catch (const NothingThere& nothing) {
    return nothing.number();
  } catch (const Failure& failure) {
    return told(failure.number(), failure.what());
  } catch (const std::bad_alloc&) {
    const auto number = static_cast<std::int32_t>(FailureNumber::kOutOfMemory);
    return told(number, MeaningOf(number));
  } catch (const std::exception& error) {
    return told(static_cast<std::int32_t>(FailureNumber::kInternalError), error.what());
  } catch (...) {
    const auto number = static_cast<std::int32_t>(FailureNumber::kInternalError);
    return told(number, MeaningOf(number));
  }
}

// Hears of nothing.
class Unheard final : public FailureListener {
 public:
  void OnFailure(std::int32_t, const char*) noexcept override {}
};

// The same where the failure itself is the answer, such as that a text is no number, or where
// somebody else tells of it.
template <typename Piece>
std::int32_t ResumeNext(Piece&& piece) {
  Unheard unheard;
  return ResumeNext(unheard, std::forward<Piece>(piece));
}

}  // namespace vetlo
