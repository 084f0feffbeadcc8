#pragma once

#include <optional>
#include <string>

#include "base/archive_location.h"
#include "base/message_box.h"

// The texts in which the open-archive window speaks of archives, and its questions.

namespace open {

/// "name  found at: folder", for archives that exist.
std::string foundAtText(const base::ArchiveLocation& archive);
/// "name   path: folder", for an archive that is to be created.
std::string newPathText(const base::ArchiveLocation& archive);
/// The main window's caption while an archive is open.
std::string mainCaption(const std::string& archiveName);

/// What is asked about the name of a new archive: its extension, which is the whole name where
/// there is no ".", must be exactly "mdb". None where it is.
std::optional<base::Message> extensionQuestion(const std::string& archiveName);
/// Asked before an archive that exists makes room for a new one.
base::Message eraseQuestion();
base::Message creationFailedMessage();

}  // namespace open
