#pragma once

#include <type_traits>
#include <utility>
#include <variant>

namespace vetlo {

// A std::variant that can be copied where memory may run out. GCC 12 leaves a copy half-made whose
// alternative could not be copied, and then destroys it all the same; here the alternative is
// copied by itself and moved in, which cannot fail. Whatever takes a std::variant takes this too.
// Assignment leaves the old value in place where it fails.
template <typename... Types>
class OneOf : public std::variant<Types...> {
  static_assert((std::is_nothrow_move_constructible_v<Types> && ...) &&
                (std::is_nothrow_move_assignable_v<Types> && ...));
  using Base = std::variant<Types...>;

 public:
  using Base::Base;
  using Base::operator=;
  OneOf() = default;
  ~OneOf() = default;
  OneOf(const OneOf& other) : Base(CopyOf(other)) {}
  OneOf(OneOf&& other) noexcept = default;
  OneOf& operator=(const OneOf& other) { return *this = OneOf(other); }
  OneOf& operator=(OneOf&& other) noexcept = default;

  // It would leave no value behind where it fails.
  void emplace() = delete;

 private:
  static Base CopyOf(const OneOf& other) {
    return std::visit(
        [](const auto& held) -> Base {
          auto copy = held;
          return Base(std::in_place_type<decltype(copy)>, std::move(copy));
        },
        other);
  }
};

}  // namespace vetlo
