#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "keywords/keywords.h"

namespace base {
struct ProgramState;
}

namespace keywords {

/// Which of the known texts are listed.
enum class Listed {
    All,
    Added,  ///< only those that were added in this run
};

/// The boxes that say to which of the two notes a chosen text goes.
struct NoteTargets {
    bool notes1 = false;
    bool notes2 = false;
};

/// What the user of the keywords window adds, selects and applies. Knows no window. The known lists
/// live on; what was selected ends with this.
class KeywordChoice {
  public:
    /// `state` must outlive this.
    explicit KeywordChoice(base::ProgramState& state) : state_(state) {}

    /// The known keywords in their order, as far as they can be read: nothing where there never was
    /// one.
    std::vector<std::string> keywords(Listed listed) const;
    std::vector<std::string> notes(Listed listed) const;

    /// Makes a text known, also an empty one and one that is known already. The number of the new
    /// entry is 1 while the list's counter is below 1, which cuts a list that holds more, and else
    /// one more than the list's last; a list that has a count but was never filled is a
    /// NothingToAddToFailure.
    void addKeyword(const std::string& text);
    /// The same for notes; the 32,768th is a TooManyNotesFailure.
    void addNote(const std::string& text);

    void selectKeyword(const std::string& text);
    void selectNote(const std::string& text, NoteTargets targets);

    /// The texts to apply; an empty one changes nothing.
    RecordTexts selected() const { return {selectedKeywords_, selectedNote1_, selectedNote2_}; }
    /// Number of the records that applying means; 0 where none was ever selected.
    std::int64_t recordCount() const;
    bool recordsEverSelected() const;

    /// What is said before anything has been selected.
    std::string openingInfo() const;
    /// What was selected, in lines that end with carriage return and line feed.
    std::string info() const;

    /// applyKeywords() on the list that viewMode names.
    void apply(RecordColumns& columns);

  private:
    base::ProgramState& state_;
    std::string selectedKeywords_;  ///< joined by commas
    std::string selectedNote1_;
    std::string selectedNote2_;
};

}  // namespace keywords
