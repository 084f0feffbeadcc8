#pragma once

#include <memory>
#include <string>

#include "search/index.h"

namespace cli {

struct Context;

/// Walks a drive ("d:") or a folder into an index, without an archive. Folders that cannot be
/// listed are reported. A drive or folder that is not there is a base::FileFailure. `isIncomplete`
/// tells whether something was left out.
struct ScannedIndex {
    std::shared_ptr<const search::Index> index;
    bool isIncomplete = false;
};
ScannedIndex scanIndex(Context& context, const std::string& what);

}  // namespace cli
