#pragma once

#include <memory>
#include <string>
#include <vector>

#include "search/index.h"
#include "search/query.h"

namespace CLI {  // NOLINT(readability-identifier-naming): given by the library
class App;
}

namespace cli {

struct Context;

/// The words of a query on the command line, which count as one line with blanks between.
class QueryLine {
  public:
    enum class Needed { Yes, No };
    void addTo(CLI::App& app, Needed needed);
    bool isGiven() const { return !words_.empty(); }
    /// What the line means today. A part that is unfinished or of an unknown field is reported; one
    /// that cannot be understood is an InvalidArgumentFailure, as without it the line would find
    /// more than was asked for.
    search::Query read(Context& context) const;

  private:
    std::vector<std::string> words_;
};

/// The index of an archive; failures of the engine pass.
std::shared_ptr<const search::Index> readIndex(Context& context, const std::string& archive);

/// All rows that a query finds, in its order; with the copies known where `needsCopies`.
std::vector<search::Row> findRows(const std::shared_ptr<const search::Index>& index,
                                  const search::Query& query, bool needsCopies);

}  // namespace cli
