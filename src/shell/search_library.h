#pragma once

#include <QLibrary>

#include "search/form_search.h"
#include "search/search_host.h"

namespace shell {

/// Makes search components with the library "searchcontrol" beside the program. It is loaded when
/// the first one is wanted.
class SearchLibrary {
  public:
    explicit SearchLibrary(search::SearchHost host);

    /// Never a failure: where the library is missing, cannot be loaded or was built for another
    /// version of the program, the result says so.
    search::MadeControl makeControl();

  private:
    std::string load();

    search::SearchHost host_;
    QLibrary library_;
};

}  // namespace shell
