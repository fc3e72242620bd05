#include "quillmarsh/cli/message_meaning.h"

namespace quillmarsh {
namespace {

// A message by its beginning. What stands between that and `behind` is a name or a number, which
// the English says between its two parts; a message that always reads the same has neither.
struct Meaning {
  std::string_view beginning;
  std::string_view behind;
  std::string_view english;
  std::string_view english_behind;
};

constexpr Meaning kMeanings[] = {
    {"名称不能为空。", "", "The name must not be empty. Give a name.", ""},
    {"您已建立了很多的图形报表类型，", "",
     "There are a hundred favorites already. Take one away first, with 'quillmarsh unfavorite'.",
     ""},
    {"您真的要替换“", "”吗？", "Do you really want to replace the favorite '", "'?"},
    {"图形报表名称最多只能有", "个字符（注", "The name may have at most ",
     " characters. Give a shorter one."},
    {"不能建立图形报表类型，", "", "The favorite could not be added; another name may help.", ""},
    {"不能更改图形报表类型，", "", "The favorite could not be changed; another name may help.", ""},
};

std::string EnglishOf(const Meaning& meaning, std::string_view message) {
  std::string english(meaning.english);
  if (!meaning.behind.empty()) {
    message.remove_prefix(meaning.beginning.size());
    english += message.substr(0, message.rfind(meaning.behind));
  }
  return english.append(meaning.english_behind);
}

}  // namespace

std::string WithMeaning(std::string_view message) {
  std::string text(message);
  for (const Meaning& meaning : kMeanings) {
    if (message.starts_with(meaning.beginning)) {
      return text + " (" + EnglishOf(meaning, message) + ")";
    }
  }
  return text;
}

}  // namespace quillmarsh
