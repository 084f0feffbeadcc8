#pragma once

namespace cli {

/// What the companion tells the program that started it.
enum class ExitCode : int {
    Done = 0,
    Failed = 1,
    WrongUsage = 2,
    NothingFound = 1,  ///< of a search
    SearchFailed = 2,  ///< of a search, where 1 is taken
    Incomplete = 3,    ///< done, but some entries were left out or stored inexactly
};

}  // namespace cli
