#include "search/search.h"

#include "base/program_state.h"

namespace search {

void showSearch(const base::ProgramState& state, const std::function<SearchFrame&()>& window) {
    SearchFrame& frame = window();
    frame.showWindow();
    frame.setArchivePath(state.currentArchive().fullPath());
}

}  // namespace search
