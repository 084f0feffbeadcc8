#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/random_access_file.h"
#include "jet/format.h"

namespace jet {

/// Opens an existing file, for writing too where `forWriting` is set and the system lets us. An
/// EngineFailure says why there is none.
std::unique_ptr<base::RandomAccessFile> openExisting(base::FileOpener& files,
                                                     const std::string& path, bool forWriting);

/// The first bytes of a file, fewer where it ends before.
std::vector<std::uint8_t> readStart(base::RandomAccessFile& file, std::size_t count);

/// Says of which format a file is, having waited for the right to read it: NotADatabase, InUse, or
/// Damaged when the file is too short for its format.
const Format& recogniseFile(base::RandomAccessFile& file, const std::string& path,
                            base::FileOpener& files, int lockWaitMilliseconds);

/// Waits for the lock for a while; InUse when it is not to be had.
void takeLock(base::RandomAccessFile& file, base::RandomAccessFile::Lock lock,
              const std::string& path, base::FileOpener& files, int waitMilliseconds);

}  // namespace jet
