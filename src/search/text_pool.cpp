#include "search/text_pool.h"

#include <functional>

#include "base/failure.h"

namespace search {

namespace {

std::uint32_t hashOf(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

}  // namespace

TextPool::Id TextPool::intern(std::string_view text) {
    if (slots_.size() < 2 * (std::size_t{size()} + 1)) {
        widen();
    }
    const std::size_t mask = slots_.size() - 1;
    const std::uint32_t hash = hashOf(text);
    std::size_t slot = hash & mask;
    for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
        if (hashes_[slots_[slot] - 1] == hash && (*this)[slots_[slot] - 1] == text) {
            return slots_[slot] - 1;
        }
    }
    if (text.size() > UINT32_MAX - block_.size()) {
        throw base::OverflowFailure("the archive's texts: there are more than 4 GiB of them");
    }
    block_ += text;
    starts_.push_back(static_cast<std::uint32_t>(block_.size()));
    hashes_.push_back(hash);
    slots_[slot] = size();
    return size() - 1;
}

void TextPool::widen() {
    std::vector<Id> slots(slots_.empty() ? 64 : 2 * slots_.size(), 0);
    const std::size_t mask = slots.size() - 1;
    for (Id id = 0; id < size(); ++id) {
        std::size_t slot = hashes_[id] & mask;
        while (slots[slot] != 0) {
            slot = (slot + 1) & mask;
        }
        slots[slot] = id + 1;
    }
    slots_.swap(slots);
}

void TextPool::seal() {
    std::vector<Id>().swap(slots_);
    std::vector<std::uint32_t>().swap(hashes_);
    block_.shrinkToFit();
    starts_.shrink_to_fit();
}

std::size_t TextPool::memory() const {
    return block_.capacity() + starts_.capacity() * sizeof(std::uint32_t) +
           slots_.capacity() * sizeof(Id) + hashes_.capacity() * sizeof(std::uint32_t);
}

}  // namespace search
