#pragma once

namespace shell {

/// Thrown by the pending events of a long operation once the user has ended the program: it ends
/// the operation where it stands, its resources being closed on the way. No failure, so that no
/// operation takes it for one.
struct EndOfProgram {};

/// Whether the user has ended the program.
class ProgramEnd {
  public:
    void request() { requested_ = true; }
    bool isRequested() const { return requested_; }

  private:
    bool requested_ = false;
};

}  // namespace shell
