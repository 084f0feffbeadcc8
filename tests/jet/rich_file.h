#pragma once

#include <string>

#include "base/random_access_file.h"
#include "jet/database.h"

namespace jet_test {

/// Makes a small file with something of everything: columns of all types, texts of all forms,
/// NULLs, deleted and moved rows, long values in the row, in one piece and in several, a definition
/// of two pages, an empty table.
void makeRichFile(base::FileOpener& files, const std::string& path, jet::FileFormat format);

/// Opens a file and reads all there is in it: catalog, definitions, properties, every value of
/// every row. Returns the number of values. What the engine throws is thrown.
std::size_t readEverything(base::FileOpener& files, const std::string& path);

/// Adds, changes and deletes rows of every table that lets it.
void changeEverything(base::FileOpener& files, const std::string& path);

}  // namespace jet_test
