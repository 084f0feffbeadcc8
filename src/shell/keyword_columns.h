#pragma once

#include "keywords/keywords.h"
#include "shell/record_list.h"

namespace shell {

/// The columns of keywords and notes in the main window's record list.
class KeywordColumns : public keywords::RecordColumns {
  public:
    /// `list` must outlive this.
    explicit KeywordColumns(RecordList& list) : list_(list) {}

    void showTexts(std::int64_t position, const keywords::RecordTexts& texts) override {
        constexpr int keywordsColumn = 5;
        list_.records().setTexts(position, keywordsColumn,
                                 {texts.keywords, texts.notes1, texts.notes2});
    }

  private:
    RecordList& list_;
};

}  // namespace shell
