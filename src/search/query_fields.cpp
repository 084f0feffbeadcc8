#include "search/query_fields.h"

#include <array>

namespace search {
namespace {

constexpr std::array<QueryField, 36> fields{{
    {"name", "name:", "the name holds", "name:invoice"},
    {"name", "ext:", "the extension is one of", "ext:jpg;png"},
    {"name", "type:", "the type holds, or is a kind of file", "type:video"},
    {"name", "path:", "path and name together hold", "path:photos\\2004"},
    {"name", "dir:", "the folder's path holds", "dir:\"photos\\2004\""},
    {"name", "depth:", "how deep in the medium; 1 is the top", "depth:1"},
    {"name", "len:", "characters of path and name together", "len:>200"},
    {"kind", "file:", "only files", "file: holiday"},
    {"kind", "folder:", "only folders", "folder: holiday"},
    {"size", "size:", "bytes, kb, mb, gb, tb", "size:10kb..2mb"},
    {"dates", "date:", "last changed", "date:2019-05..2020"},
    {"dates", "created:", "created", "created:2004"},
    {"dates", "scanned:", "the medium was last read in", "scanned:last90days"},
    {"medium", "medium:", "number, name or label of the medium", "medium:7"},
    {"medium", "kind:", "kind of drive", "kind:cdrom"},
    {"annotation", "kw:", "the keywords hold", "kw:holiday"},
    {"annotation", "note:", "a note holds", "note:\"do not delete\""},
    {"annotation", "has:", "has kw, note, date, ext", "!has:kw"},
    {"copies", "copies:", "entries of the same name and size", "copies:1 size:>100mb"},
    {"copies", "dup:", "there is another copy", "dup:"},
    {"copies", "only:", "only on this medium", "only:7"},
    {"copies", "missing:", "not on this medium", "medium:3 missing:5"},
    {"words", "case:", "capital and small letters count", "case:README"},
    {"words", "accents:", "accents count", "accents:été"},
    {"words", "whole:", "only as a whole word", "whole:cat"},
    {"words", "start:", "the name starts with", "start:img_"},
    {"words", "end:", "the name ends with", "end:.bak"},
    {"words", "nopath:", "in the name alone", "nopath:photos"},
    {"words", "regex:", "a regular expression", "regex:^img_\\d+"},
    {"result", "sort:", "order by a column, - reverses", "sort:-size"},
    {"result", "limit:", "at most so many", "limit:500"},
    {"operators", "|", "or; also OR", "jpg | png"},
    {"operators", "!", "not; also - and NOT", "holiday !2004"},
    {"operators", "( )", "what belongs together", "(jpg | png) holiday"},
    {"operators", "\" \"", "this exact sequence", "\"summer holiday\""},
    {"operators", "* ?", "the whole name is of this form", "img_????.jpg"},
}};

}  // namespace

std::span<const QueryField> queryFields() { return fields; }

}  // namespace search
