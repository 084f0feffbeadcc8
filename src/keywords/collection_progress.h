#pragma once

#include <cstdint>
#include <string>

namespace keywords {

/// Shows how far initKeywords() is. It is told after every record, so each call should cost little.
class CollectionProgress {
  public:
    virtual ~CollectionProgress() = default;
    virtual void setText(const std::string& text) = 0;
    virtual void setRange(std::int64_t minimum, std::int64_t maximum) = 0;
    virtual void setPosition(std::int64_t position) = 0;
    /// Becomes visible. Nothing hides it again: that is for whoever had the texts collected.
    virtual void showProgress() = 0;
};

}  // namespace keywords
