#include "vetlo/platform/arrays.h"

namespace vetlo {

void AmountRows::Start() {
  amounts_.Start();
  labels_.Start();
  apart_ = false;
}

void AmountRows::StartApart() {
  Start();
  apart_ = true;
}

void AmountRows::Add(double amount, std::string label) {
  amounts_.Add(amount);
  labels_.Add(std::move(label));
}

void AmountRows::WriteSpare(Currency amount, std::string label) {
  amounts_.WriteSpare(ToDouble(amount));
  labels_.WriteSpare(std::move(label));
}

void AmountRows::Close() {
  amounts_.Close();
  labels_.Close();
}

AmountMatrix AmountRows::Amounts() const {
  if (apart_ || amounts_.UpperBound() == 0) {
    return {};
  }
  AmountMatrix matrix(1, amounts_.UpperBound());
  for (std::size_t i = 1; i <= amounts_.UpperBound(); ++i) {
    matrix(1, i) = amounts_(i);
  }
  return matrix;
}

}  // namespace vetlo
