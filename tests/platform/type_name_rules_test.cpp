#include "platform/type_name_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace platform {
namespace {

TEST(TypeNameRulesTest, TheExtensionMakesTheText) {
    const struct {
        const char* name;
        const char* text;
    } cases[] = {
        {"a.xyz", "XYZ File"},
        {"a.b.xyz", "XYZ File"},
        {"A.XYZ", "XYZ File"},
        {"noextension", "File"},
        {"dot.", "File"},
        {".hidden", "File"},
        {".hidden.xyz", "XYZ File"},
        {"", "File"},
        {".", "File"},
        {"Mr. Smith", "File"},
        {"a.b c", "File"},
        {"a.größe", "GRÖßE File"},
        {"a.жук", "ЖУК File"},
        {"a.ωμ", "ΩΜ File"},
        {"a.日本", "日本 File"},
        {"a.mp3", "MP3 File"},
        {"a.αβγ", "ΑΒΓ File"},
    };
    for (const auto& file : cases) {
        EXPECT_EQ(extensionTypeName(file.name), file.text) << file.name;
    }
}

TEST(TypeNameRulesTest, TheTextHasAtMostEightyCharacters) {
    EXPECT_EQ(extensionTypeName("a." + std::string(75, 'x')), std::string(75, 'X') + " File");
    EXPECT_EQ(extensionTypeName("a." + std::string(76, 'x')), std::string(76, 'X') + " Fil");
    EXPECT_EQ(extensionTypeName("a." + std::string(200, 'x')), std::string(80, 'X'));
    std::string extension;
    for (int i = 0; i < 41; ++i) {
        extension += "😀";
    }
    EXPECT_EQ(extensionTypeName("a." + extension), extension.substr(0, 40 * 4));
}

}  // namespace
}  // namespace platform
