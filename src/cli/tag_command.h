#pragma once

#include <optional>
#include <string>

#include "archive/annotations.h"
#include "cli/command.h"
#include "cli/query_line.h"

namespace cli {

/// vdln tag ARCHIVE QUERY... [--keywords TEXT | --add-keyword TEXT | --remove-keyword TEXT]
/// [--notes1 TEXT] [--notes2 TEXT] [--dry-run]: changes keywords and notes of what the query finds.
class TagCommand : public Command {
  public:
    std::string name() const override { return "tag"; }
    std::string description() const override {
        return "Change keywords and notes of the entries that a query finds";
    }
    void addOptions(CLI::App& app) override;
    ExitCode run(Context& context) override;
    bool takesQuery() const override { return true; }

  private:
    archive::Annotation changed(archive::Annotation annotation) const;
    ExitCode apply(Context& context, const std::vector<archive::AnnotationChange>& changes) const;
    void list(Context& context, const std::vector<archive::AnnotationChange>& changes) const;

    std::string archive_;
    QueryLine query_;
    std::optional<std::string> keywords_;
    std::optional<std::string> addedKeyword_;
    std::optional<std::string> removedKeyword_;
    std::optional<std::string> notes1_;
    std::optional<std::string> notes2_;
    bool isDryRun_ = false;
};

}  // namespace cli
