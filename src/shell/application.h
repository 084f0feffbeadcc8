#pragma once

#include <QApplication>

namespace shell {

class FailureBoundary;

/// The event loop, with the boundary at which failures end.
///
/// Enter held down counts once. Each of its repetitions would press the same button again, and so
/// begin a long operation inside the one that is running, as deep as somebody leans on the key.
class Application : public QApplication {
  public:
    /// Both must outlive this.
    Application(int& argc, char** argv);

    /// From now on failures of event handlers end there; null: they pass.
    void setBoundary(FailureBoundary* boundary) { boundary_ = boundary; }

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    FailureBoundary* boundary_ = nullptr;
};

}  // namespace shell
