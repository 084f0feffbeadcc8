#pragma once

#include <string>
#include <vector>

#include "search/exporter.h"
#include "search/index.h"

namespace CLI {  // NOLINT(readability-identifier-naming): given by the library
class App;
}

namespace cli {

struct Context;

/// The options --format, --columns and --neutralise-formulas of commands that print entries, and
/// the printing.
class ResultPrinter {
  public:
    enum class TextFormat { Offered, NotOffered };
    /// Without the format for people one of the others must be chosen.
    explicit ResultPrinter(TextFormat text);
    void addTo(CLI::App& app);

    /// The format is text, which says nothing where there is nothing; the others are complete then
    /// too.
    bool isForPeople() const { return format_ == "text"; }
    bool showsCopies() const;
    void print(Context& context, const search::Index& index,
               const std::vector<search::Row>& rows) const;

  private:
    std::vector<search::ResultColumn> columns() const;
    void printText(Context& context, const search::Index& index,
                   const std::vector<search::Row>& rows) const;

    bool offersText_;
    std::string format_;
    std::string columns_;  ///< with commas between
    bool neutralisesFormulas_ = false;
};

}  // namespace cli
