#pragma once

namespace cli {

/// The user's wish to end a long command (Ctrl+C).
class Interruption {
  public:
    virtual ~Interruption() = default;
    /// From now on the wish is noted and the command ends in order; before, it ends the process.
    virtual void watch() = 0;
    virtual bool isRequested() const = 0;
};

/// Thrown to end a walk that the user has interrupted. Not a failure: what was done is kept.
struct Interrupted {};

inline void throwIfRequested(const Interruption& interruption) {
    if (interruption.isRequested()) {
        throw Interrupted();
    }
}

}  // namespace cli
