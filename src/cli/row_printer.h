#pragma once

namespace jet {
class Recordset;
}

namespace cli {

class TableWriter;

/// Prints the current row of `rows` and all behind it: every field in the order of the table. The
/// recordset is at its end afterwards.
void printRows(jet::Recordset& rows, TableWriter& writer);

}  // namespace cli
