#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "open/file_dialogs.h"

namespace support {

/// Answers file dialogs from a list and remembers which ones were shown. One that nobody expected
/// fails the test.
class ScriptedFileDialogs : public open::FileDialogs {
  public:
    struct Shown {
        std::string kind;  ///< "open" or "save"
        std::string filter;
        std::string initialFolder;
        std::string defaultExtension;

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    void choose(const std::string& path) { answers_.push_back({path, false}); }
    void cancel() { answers_.push_back({std::nullopt, false}); }
    void fail() { answers_.push_back({std::nullopt, true}); }

    std::optional<std::string> showOpen(const open::FileDialogRequest& request) override {
        return answer("open", request);
    }
    std::optional<std::string> showSave(const open::FileDialogRequest& request) override {
        return answer("save", request);
    }

    bool allAnswersUsed() const { return answers_.empty(); }

    std::vector<Shown> shown;

  private:
    struct Answer {
        std::optional<std::string> path;
        bool fails;
    };

    std::optional<std::string> answer(const char* kind, const open::FileDialogRequest& request) {
        shown.push_back({kind, std::string(request.filter), request.initialFolder,
                         std::string(request.defaultExtension)});
        if (answers_.empty()) {
            ADD_FAILURE() << "unexpected file dialog";
            return std::nullopt;
        }
        const Answer answer = answers_.front();
        answers_.pop_front();
        if (answer.fails) {
            throw base::FileFailure("no dialog can be shown");
        }
        return answer.path;
    }

    std::deque<Answer> answers_;
};

}  // namespace support
