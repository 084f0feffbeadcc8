#pragma once

#include "jet/table_definition.h"

namespace archive {

/// Table `main`: one row for every folder and every file of every medium.
const jet::TableDefinition& mainTable();

/// Table `media`: one row for every medium. `mediaid` ties the rows of `main` to it; the program
/// keeps that link itself, the tables have no index, key or relation.
const jet::TableDefinition& mediaTable();

}  // namespace archive
