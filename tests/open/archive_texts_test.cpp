#include "open/archive_texts.h"

#include <gtest/gtest.h>

#include <string>

namespace open {
namespace {

const base::ArchiveLocation photos = {"C:\\Archives\\", "photos.mdb"};

TEST(ArchiveTexts, AnArchiveIsNamedWithWhereItIsFound) {
    EXPECT_EQ(foundAtText(photos), "photos.mdb  found at: C:\\Archives\\");
    EXPECT_EQ(foundAtText({}), "  found at: ");
}

TEST(ArchiveTexts, ANewArchiveIsNamedWithItsPath) {
    EXPECT_EQ(newPathText(photos), "photos.mdb   path: C:\\Archives\\");
}

TEST(ArchiveTexts, TheCaptionHoldsTheFileNameOnly) {
    EXPECT_EQ(mainCaption("photos.mdb"), "Verdolin - photos.mdb");
}

TEST(ArchiveTexts, OnlyMdbInSmallLettersIsAValidExtension) {
    for (const char* name : {"catalog.mdb", "a.b.mdb", ".mdb", "mdb", "Ä.mdb"}) {
        EXPECT_FALSE(extensionQuestion(name)) << name;
    }
}

TEST(ArchiveTexts, AnyOtherExtensionIsNamedInTheQuestion) {
    const std::pair<const char*, const char*> cases[] = {
        {"catalog.MDB", "MDB"}, {"catalog", "catalog"},   {"a.mdb.txt", "txt"},
        {"catalog.", ""},       {"catalog.mdb ", "mdb "}, {"", ""}};
    for (const auto& [name, extension] : cases) {
        const base::Message expected = {
            "Extension Not Valid",
            "The extension of ." + std::string(extension) + " is not valid, it must be .mdb",
            base::MessageButtons::OkCancel};
        EXPECT_EQ(extensionQuestion(name), expected) << name;
    }
}

TEST(ArchiveTexts, TheEraseQuestionIsOneTextOfFourPieces) {
    const base::Message expected = {
        "Erase Existing Archive?",
        "You have selected a new archive with the same name and path as an existing archive.  This "
        "process will ERASE the existing archive.  If you wish to add to an existing archive, use "
        "the 'Recent' or 'Existing' tabs.  Do you wish to proceed with creating a NEW archive "
        "(This will erase the old archive)?",
        base::MessageButtons::YesNoCancel};
    EXPECT_EQ(eraseQuestion(), expected);
}

}  // namespace
}  // namespace open
