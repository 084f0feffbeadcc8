#include "cli/tag_command.h"

#include <CLI/CLI.hpp>

#include "archive/keyword_list.h"
#include "base/archive_location.h"
#include "base/failure.h"
#include "cli/archive_option.h"
#include "cli/checked_output.h"
#include "cli/context.h"
#include "cli/messages.h"
#include "cli/table_writer.h"

namespace cli {
namespace {

std::string countText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " entry" : " entries");
}

archive::Annotation annotationOf(const base::ScanEntry& entry) {
    return {entry.keywords, entry.Notes1, entry.Notes2};
}

}  // namespace

void TagCommand::addOptions(CLI::App& app) {
    addArchiveArgument(app, "ARCHIVE", "The archive's file", archive_);
    query_.addTo(app, QueryLine::Needed::Yes);
    CLI::Option* const set = app.add_option("--keywords", keywords_, "Make this the keywords");
    CLI::Option* const add = app.add_option("--add-keyword", addedKeyword_,
                                            "Put this behind the keywords, unless it is "
                                            "among them");
    CLI::Option* const remove =
        app.add_option("--remove-keyword", removedKeyword_, "Take this out of the keywords");
    set->type_name("TEXT")->excludes(add)->excludes(remove);
    add->type_name("TEXT")->excludes(remove);
    remove->type_name("TEXT");
    app.add_option("--notes1", notes1_, "Make this the first note")->type_name("TEXT");
    app.add_option("--notes2", notes2_, "Make this the second note")->type_name("TEXT");
    app.add_flag("--dry-run", isDryRun_, "Change nothing, list what would be changed");
    app.final_callback([this] {
        if (!keywords_ && !addedKeyword_ && !removedKeyword_ && !notes1_ && !notes2_) {
            throw CLI::ValidationError("nothing to change was given");
        }
    });
}

archive::Annotation TagCommand::changed(archive::Annotation annotation) const {
    if (keywords_) {
        annotation.keywords = *keywords_;
    } else if (addedKeyword_) {
        annotation.keywords = archive::withKeyword(annotation.keywords, *addedKeyword_);
    } else if (removedKeyword_) {
        annotation.keywords = archive::withoutKeyword(annotation.keywords, *removedKeyword_);
    }
    annotation.notes1 = notes1_.value_or(annotation.notes1);
    annotation.notes2 = notes2_.value_or(annotation.notes2);
    return annotation;
}

ExitCode TagCommand::run(Context& context) {
    const auto index = readIndex(context, archive_);
    const search::Query query = query_.read(context);
    if (!query.notices.empty()) {
        throw base::InvalidArgumentFailure(
            "query: nothing was changed, as part of the query would have been left out");
    }
    if (query.isEverything()) {
        throw base::InvalidArgumentFailure(
            "query: nothing was changed, as there is no condition; write * to change every entry");
    }
    std::vector<archive::AnnotationChange> changes;
    for (const search::Row row : findRows(index, query, false)) {
        const base::ScanEntry entry = index->entry(row);
        const archive::Annotation annotation = changed(annotationOf(entry));
        if (annotation != annotationOf(entry)) {
            changes.push_back({index->place(row), entry, annotation});
        }
    }
    if (isDryRun_) {
        list(context, changes);
        return ExitCode::Done;
    }
    return apply(context, changes);
}

void TagCommand::list(Context& context,
                      const std::vector<archive::AnnotationChange>& changes) const {
    const auto writer =
        makeTableWriter(OutputFormat::Text, context.out,
                        context.outIsTerminal ? Audience::Terminal : Audience::Program);
    writer->begin({{"path", false}, {"keywords", false}, {"notes1", false}, {"notes2", false}});
    for (const archive::AnnotationChange& change : changes) {
        writer->row({Cell::ofText(change.expected.path + "\\" + change.expected.FileName),
                     Cell::ofText(change.annotation.keywords),
                     Cell::ofText(change.annotation.notes1),
                     Cell::ofText(change.annotation.notes2)});
    }
    writer->end();
}

ExitCode TagCommand::apply(Context& context,
                           const std::vector<archive::AnnotationChange>& changes) const {
    archive::AnnotationResult result;
    if (!changes.empty()) {
        result = archive::annotate(context.engine, base::splitArchivePath(archive_), changes);
    }
    writeChecked(context.out, countText(result.undo.size()) + " changed\n");
    for (const std::size_t missed : result.missed) {
        const base::ScanEntry& entry = changes[missed].expected;
        context.messages.report(entry.path + "\\" + entry.FileName +
                                ": left as it is: it has been changed or deleted meanwhile");
    }
    return result.missed.empty() ? ExitCode::Done : ExitCode::Incomplete;
}

}  // namespace cli
