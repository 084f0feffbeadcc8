#include "searchcontrol/annotation_wish.h"

#include <gtest/gtest.h>

namespace searchcontrol {
namespace {

using Kind = TextWish::Kind;

archive::Annotation with(const std::string& keywords, const TextWish& wish) {
    return wishedFor({keywords, "one", ""}, {wish, {}, {}});
}

TEST(AnnotationWish, WithoutAWishEverythingStays) {
    const archive::Annotation now{"a,b", "one", "two"};
    EXPECT_EQ(wishedFor(now, {}), now);
    EXPECT_EQ(wishedFor(now, {{Kind::Keep, "x"}, {Kind::Keep, "y"}, {Kind::Keep, "z"}}), now);
}

TEST(AnnotationWish, SettingReplacesAndEmpties) {
    EXPECT_EQ(with("a,b", {Kind::Set, "c"}).keywords, "c");
    EXPECT_EQ(with("a,b", {Kind::Set, ""}).keywords, "");
}

TEST(AnnotationWish, KeywordsAreAddedBehindACommaAndOnlyOnce) {
    EXPECT_EQ(with("", {Kind::Add, "beach"}).keywords, "beach");
    EXPECT_EQ(with("holiday", {Kind::Add, "beach"}).keywords, "holiday,beach");
    EXPECT_EQ(with("holiday, Beach", {Kind::Add, "beach"}).keywords, "holiday, Beach");
    EXPECT_EQ(with("a", {Kind::Add, " b , a,, b"}).keywords, "a,b");
}

TEST(AnnotationWish, NotesAreAddedBehindABlank) {
    const archive::Annotation wished =
        wishedFor({"", "one", ""}, {{}, {Kind::Add, "two"}, {Kind::Add, "three"}});
    EXPECT_EQ(wished.notes1, "one two");
    EXPECT_EQ(wished.notes2, "three");
}

}  // namespace
}  // namespace searchcontrol
