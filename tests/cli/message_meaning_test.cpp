#include "quillmarsh/cli/message_meaning.h"

#include <gtest/gtest.h>

namespace quillmarsh {
namespace {

TEST(WithMeaning, PutsTheEnglishBehindTheMessage) {
  EXPECT_EQ(WithMeaning("名称不能为空。请输入一个非空的名称。"),
            "名称不能为空。请输入一个非空的名称。 (The name must not be empty. Give a name.)");
}

TEST(WithMeaning, KeepsTheNameOfWhichTheMessageSpeaks) {
  EXPECT_EQ(WithMeaning("您真的要替换“Wohin es geht”吗？"),
            "您真的要替换“Wohin es geht”吗？ (Do you really want to replace the favorite 'Wohin es "
            "geht'?)");
}

TEST(WithMeaning, KeepsANameThatLooksLikeTheEndOfTheMessage) {
  EXPECT_EQ(WithMeaning("您真的要替换“a”吗？b”吗？"),
            "您真的要替换“a”吗？b”吗？ (Do you really want to replace the favorite 'a”吗？b'?)");
}

TEST(WithMeaning, KeepsTheNumberOfWhichTheMessageSpeaks) {
  EXPECT_EQ(WithMeaning("图形报表名称最多只能有50个字符（注：一个汉字视为2个字符）。"
                        "请输入一个在此范围内的名称。"),
            "图形报表名称最多只能有50个字符（注：一个汉字视为2个字符）。"
            "请输入一个在此范围内的名称。 (The name may have at most 50 characters. Give a shorter "
            "one.)");
}

TEST(WithMeaning, LeavesAMessageInEnglish) {
  EXPECT_EQ(WithMeaning("The Report/Chart title can not be empty."),
            "The Report/Chart title can not be empty.");
  EXPECT_EQ(WithMeaning(""), "");
}

}  // namespace
}  // namespace quillmarsh
