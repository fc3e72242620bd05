#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vetlo/platform/currency.h"
#include "vetlo/platform/failure.h"

namespace vetlo {

// A 1-based array that grows by one. Its last slot is the spare one, always the next to be
// written; Close removes it. An array that was never started has no elements at all.
template <typename T>
class GrowingArray {
 public:
  GrowingArray() = default;
  // A finished array of these elements, without a spare slot.
  explicit GrowingArray(std::vector<T> elements) : elements_(std::move(elements)) {}

  // (1 To 1): nothing but the spare slot.
  void Start() { elements_.assign(1, T{}); }

  // Writes the spare slot and grows by a new one.
  void Add(T element) {
    WriteSpare(std::move(element));
    elements_.emplace_back();
  }

  // Writes the spare slot and leaves it the last: the array is finished.
  void WriteSpare(T element) { At(elements_.size()) = std::move(element); }

  // Removes the spare slot. Where nothing else is left that fails with kSubscriptOutOfRange, and
  // the array stays as it is.
  void Close() {
    if (elements_.size() <= 1) {
      throw NothingThere(FailureNumber::kSubscriptOutOfRange);
    }
    elements_.pop_back();
  }

  // The highest index, 0 for an array that was never started.
  [[nodiscard]] std::size_t UpperBound() const { return elements_.size(); }

  // Fails with kSubscriptOutOfRange outside 1 to UpperBound().
  [[nodiscard]] const T& operator()(std::size_t i) const {
    return const_cast<GrowingArray*>(this)->At(i);
  }

  [[nodiscard]] const std::vector<T>& elements() const { return elements_; }

 private:
  T& At(std::size_t i) {
    if (i < 1 || i > elements_.size()) {
      throw Failure(FailureNumber::kSubscriptOutOfRange);
    }
    return elements_[i - 1];
  }

  std::vector<T> elements_;
};

// A matrix with bounds (1 To series, 1 To items), or without any where it was never dimensioned.
template <typename T>
class Matrix {
 public:
  Matrix() = default;
  Matrix(std::size_t series, std::size_t items) : series_(series), elements_(series * items) {}

  [[nodiscard]] std::size_t Series() const { return series_; }
  [[nodiscard]] std::size_t Items() const { return series_ == 0 ? 0 : elements_.size() / series_; }

  // Both fail with kSubscriptOutOfRange outside the bounds.
  T& operator()(std::size_t series, std::size_t item) { return elements_[IndexOf(series, item)]; }
  const T& operator()(std::size_t series, std::size_t item) const {
    return elements_[IndexOf(series, item)];
  }

  // The elements series by series within each item.
  [[nodiscard]] const std::vector<T>& elements() const { return elements_; }

  friend bool operator==(const Matrix&, const Matrix&) = default;

 private:
  [[nodiscard]] std::size_t IndexOf(std::size_t series, std::size_t item) const {
    if (series < 1 || series > series_ || item < 1 || item > Items()) {
      throw Failure(FailureNumber::kSubscriptOutOfRange);
    }
    return (item - 1) * series_ + (series - 1);
  }

  std::size_t series_ = 0;
  std::vector<T> elements_;
};

// The numbers of a report or chart: the first index is the series, the second the item.
using AmountMatrix = Matrix<double>;
// The labels of the items, (1 To items).
using ItemLabels = GrowingArray<std::string>;

// The rows of one amount series that a compute routine fills, row by row. What a routine that
// failed has left in it stays readable.
class AmountRows {
 public:
  // One spare row.
  void Start();
  // The same, for a routine that gathers its amounts apart: until it hands them over there is
  // nothing but labels to be seen.
  void StartApart();
  void HandOver() { apart_ = false; }

  // Writes the spare row and grows by a new one.
  void Add(double amount, std::string label);
  void Add(Currency amount, std::string label) { Add(ToDouble(amount), std::move(label)); }

  // A row that carries no figure, marked by the amount -1: a heading, or without a label a blank
  // line.
  void AddHeading(std::string_view label) { Add(-1.0, std::string(label)); }

  // Writes the spare row and leaves it the last.
  void WriteSpare(Currency amount, std::string label);

  // Removes the spare row; fails with kSubscriptOutOfRange where there is no other.
  void Close();

  [[nodiscard]] AmountMatrix Amounts() const;
  [[nodiscard]] const ItemLabels& Labels() const { return labels_; }

 private:
  GrowingArray<double> amounts_;
  ItemLabels labels_;
  bool apart_ = false;
};

}  // namespace vetlo
