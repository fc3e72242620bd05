#include "vetlo/platform/failure.h"

namespace vetlo {

const char* MeaningOf(std::int32_t number) noexcept {
  switch (static_cast<FailureNumber>(number)) {
    case FailureNumber::kInvalidCall:
      return "a date or a request is out of range";
    case FailureNumber::kOverflow:
      return "an amount or a number is too large to be counted; look for one in the store that "
             "cannot be "
             "right";
    case FailureNumber::kOutOfMemory:
      return "there is not enough memory; close other programs and try again";
    case FailureNumber::kSubscriptOutOfRange:
      return "there is no row or column of that number";
    case FailureNumber::kDivisionByZero:
      return "a width or an amount is zero that something is divided by";
    case FailureNumber::kTypeMismatch:
      return "a value is of the wrong kind";
    case FailureNumber::kInternalError:
      return "the program has failed in itself";
    case FailureNumber::kObjectNotSet:
      return "an object that is needed was not given";
    case FailureNumber::kInvalidUseOfNull:
      return "a value is empty that is needed";
    case FailureNumber::kNoPrinter:
      return "there is no printer";
    case FailureNumber::kTableNotFound:
      return "there is no such table";
    case FailureNumber::kNoCurrentRecord:
      return "the row is not there";
    case FailureNumber::kStoreUnusable:
      return "the store cannot be used";
    case FailureNumber::kBadSqlText:
      return "a question to the store is not understood";
    case FailureNumber::kDuplicateKey:
      return "what is to be added is there already";
    case FailureNumber::kNoSuchColumn:
      return "there is no such column";
    case FailureNumber::kObjectClosed:
      return "what was closed is used";
    case FailureNumber::kNothingToShow:
      return "there is nothing to show";
    case FailureNumber::kTooManyFavorites:
      return "the store takes no further favorite";
  }
  return "the reason is not known";
}

}  // namespace vetlo
