#pragma once

#include <cstdint>
#include <optional>

#include "base/archive_location.h"
#include "base/media_info.h"

namespace jet {
class Engine;
}

namespace cli {

/// Rows of table `media`. Failures of the engine pass.
class MediumRows {
  public:
    /// The engine must outlive this.
    MediumRows(jet::Engine& engine, base::ArchiveLocation archive)
        : engine_(engine), archive_(std::move(archive)) {}

    /// The first medium of that id, none where the archive has none.
    std::optional<base::MediaInfo> find(std::int32_t mediaId) const;
    /// Counts the records that the medium has in table `main`, and sets that as its number.
    std::int64_t countAnew(std::int32_t mediaId) const;
    /// Sets the number of records that the medium has in table `main`.
    void setNumberFiles(std::int32_t mediaId, std::int64_t numberFiles) const;

  private:
    jet::Engine& engine_;
    base::ArchiveLocation archive_;
};

}  // namespace cli
