#include "keywords/distinct_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace keywords {
namespace {

using Texts = std::vector<std::string>;

Texts textsOf(const DistinctTexts& distinct) {
    return {distinct.texts().begin(), distinct.texts().end()};
}

Texts distinctOf(const Texts& texts) {
    DistinctTexts distinct;
    for (const std::string& text : texts) {
        distinct.append(text);
    }
    EXPECT_EQ(distinct.appended(), static_cast<std::int64_t>(texts.size()));
    return textsOf(distinct);
}

/// What is meant, in its plainest form: a text goes into the list unless one of those in it is
/// equal.
Texts searchedThrough(const Texts& texts) {
    Texts distinct;
    for (const std::string& text : texts) {
        bool found = false;
        for (const std::string& known : distinct) {
            found = found || known == text;
        }
        if (!found) {
            distinct.push_back(text);
        }
    }
    return distinct;
}

TEST(DistinctTexts, NothingAppendedIsNothing) { EXPECT_EQ(distinctOf({}), Texts{}); }

TEST(DistinctTexts, KeepsTheOrderOfFirstAppearance) {
    EXPECT_EQ(distinctOf({"b", "a", "c", "a", "b", "d"}), (Texts{"b", "a", "c", "d"}));
}

TEST(DistinctTexts, CaseBlanksAndEmptinessCount) {
    EXPECT_EQ(distinctOf({"tag", "Tag", " tag", "tag ", "", " ", ""}),
              (Texts{"tag", "Tag", " tag", "tag ", "", " "}));
}

TEST(DistinctTexts, TakesTextsThatLieInALargerOne) {
    DistinctTexts distinct;
    {
        std::string whole = "one,two,one";
        const std::string_view view = whole;
        distinct.append(view.substr(0, 3));
        distinct.append(view.substr(4, 3));
        whole.assign(whole.size(), 'x');
    }
    distinct.append("one");
    EXPECT_EQ(textsOf(distinct), (Texts{"one", "two"}));
}

TEST(DistinctTexts, IsWhatSearchingThroughTheListGives) {
    std::mt19937 random(71);
    for (int round = 0; round < 300; ++round) {
        Texts texts(random() % 200);
        const unsigned letters = 1 + random() % 4;
        for (std::string& text : texts) {
            text.resize(random() % 5);
            std::generate(text.begin(), text.end(), [&] { return "aA \xC3"[random() % letters]; });
            if (random() % 8 == 0) {
                text += std::string(40, 'z');  // longer than a text that needs no memory
            }
        }
        EXPECT_EQ(distinctOf(texts), searchedThrough(texts)) << "round " << round;
    }
}

}  // namespace
}  // namespace keywords
