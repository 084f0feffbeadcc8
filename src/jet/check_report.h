#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace jet {

/// One thing that a check has found.
struct CheckFinding {
    enum class Kind {
        Damage,      ///< bytes contradict the format
        Unfinished,  ///< left by a program that ended in the middle of a change; all rows can be
                     ///< read, and the next write to the table mends what this engine has left
        LostSpace,   ///< space that nothing uses and that is not free either; harmless
    };

    Kind kind = Kind::Damage;
    std::uint32_t page = 0;
    std::string text;  ///< without the page's number
};

/// What a check of a whole file has found, in the order in which it was found. The number of
/// findings kept is bounded; the counts go on.
class CheckReport {
  public:
    static constexpr std::size_t maximumFindings = 200;

    void add(CheckFinding::Kind kind, std::uint32_t page, std::string text) {
        ++counts_[static_cast<std::size_t>(kind)];
        if (findings_.size() < maximumFindings) {
            findings_.push_back({kind, page, std::move(text)});
        }
    }
    void damage(std::uint32_t page, std::string text) {
        add(CheckFinding::Kind::Damage, page, std::move(text));
    }
    void unfinished(std::uint32_t page, std::string text) {
        add(CheckFinding::Kind::Unfinished, page, std::move(text));
    }
    void lostSpace(std::uint32_t page, std::string text) {
        add(CheckFinding::Kind::LostSpace, page, std::move(text));
    }

    const std::vector<CheckFinding>& findings() const { return findings_; }
    std::size_t count(CheckFinding::Kind kind) const {
        return counts_[static_cast<std::size_t>(kind)];
    }
    /// Findings beyond the ones kept.
    std::size_t leftOut() const { return counts_[0] + counts_[1] + counts_[2] - findings_.size(); }
    /// Nothing contradicts the format. There may be what an interrupted program leaves behind.
    bool isIntact() const { return count(CheckFinding::Kind::Damage) == 0; }
    /// Everything is as it should be but for lost space.
    bool isSound() const { return isIntact() && count(CheckFinding::Kind::Unfinished) == 0; }

    std::uint32_t pageCount = 0;
    std::uint32_t tableCount = 0;  ///< system tables included
    std::uint64_t rowCount = 0;    ///< of all tables

  private:
    std::vector<CheckFinding> findings_;
    std::size_t counts_[3] = {};
};

}  // namespace jet
