#include "open/archive_texts.h"

namespace open {

namespace {

std::string extensionOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? name : name.substr(dot + 1);
}

}  // namespace

std::string foundAtText(const base::ArchiveLocation& archive) {
    return archive.name + "  found at: " + archive.folder;
}

std::string newPathText(const base::ArchiveLocation& archive) {
    return archive.name + "   path: " + archive.folder;
}

std::string mainCaption(const std::string& archiveName) { return "Verdolin - " + archiveName; }

std::optional<base::Message> extensionQuestion(const std::string& archiveName) {
    const std::string extension = extensionOf(archiveName);
    if (extension == "mdb") {
        return std::nullopt;
    }
    return base::Message{"Extension Not Valid",
                         "The extension of ." + extension + " is not valid, it must be .mdb",
                         base::MessageButtons::OkCancel};
}

base::Message eraseQuestion() {
    return {"Erase Existing Archive?",
            "You have selected a new archive with the same name and path "
            "as an existing archive.  This process will ERASE the existing archive.  "
            "If you wish to add to an existing archive, use the 'Recent' or 'Existing' tabs.  "
            "Do you wish to proceed with creating a NEW archive (This will erase the old archive)?",
            base::MessageButtons::YesNoCancel};
}

base::Message creationFailedMessage() {
    return {"Error Creating Database",
            "There was an error creating a new database, see the Help manual for more information.",
            base::MessageButtons::Ok};
}

}  // namespace open
