#include "search/byte_search.h"

#include <array>
#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace search {
namespace {

/// From the most to the least frequent in names of files; bytes that are not listed are rarer
/// still.
constexpr std::string_view frequent = " eatoinrs0l1dcm2p\\ug_.3h-4567b89fvykwjxqz";

std::array<unsigned char, 256> makeFrequencies() {
    std::array<unsigned char, 256> result{};
    for (std::size_t i = 0; i < frequent.size(); ++i) {
        result[static_cast<unsigned char>(frequent[i])] =
            static_cast<unsigned char>(frequent.size() - i + 1);
    }
    // The first bytes of letters of whole alphabets; what follows them tells more.
    for (const int lead : {0xC3, 0xC4, 0xC5, 0xCE, 0xCF, 0xD0, 0xD1, 0xE3, 0xE4, 0xEF}) {
        result[static_cast<std::size_t>(lead)] = 20;
    }
    return result;
}

int frequencyOf(char byte) {
    static const std::array<unsigned char, 256> frequencies = makeFrequencies();
    return frequencies[static_cast<unsigned char>(byte)];
}

}  // namespace

ByteSearch::ByteSearch(std::string_view wanted) : wanted_(wanted) {
    for (std::size_t i = 1; i < wanted_.size(); ++i) {
        if (frequencyOf(wanted_[i]) < frequencyOf(wanted_[first_])) {
            first_ = i;
        }
    }
    const bool isInFrontHalf = 2 * first_ < wanted_.size();
    second_ = isInFrontHalf && !wanted_.empty() ? wanted_.size() - 1 : 0;
}

#if defined(__SSE2__)

std::size_t ByteSearch::find(std::string_view text, std::size_t start) const {
    if (wanted_.empty() || text.size() < wanted_.size() + 16) {
        return findPlainly(text, start);
    }
    const __m128i first = _mm_set1_epi8(wanted_[first_]);
    const __m128i second = _mm_set1_epi8(wanted_[second_]);
    const char* const data = text.data();
    // As long as both loads of sixteen bytes lie in the text.
    const std::size_t last = text.size() - wanted_.size() - 15;
    std::size_t place = start;
    for (; place <= last; place += 16) {
        const auto* const firsts = reinterpret_cast<const __m128i*>(data + place + first_);
        const auto* const seconds = reinterpret_cast<const __m128i*>(data + place + second_);
        const __m128i both = _mm_and_si128(_mm_cmpeq_epi8(_mm_loadu_si128(firsts), first),
                                           _mm_cmpeq_epi8(_mm_loadu_si128(seconds), second));
        for (auto mask = static_cast<unsigned>(_mm_movemask_epi8(both)); mask != 0;
             mask &= mask - 1) {
            const std::size_t here = place + static_cast<std::size_t>(std::countr_zero(mask));
            if (std::memcmp(data + here, wanted_.data(), wanted_.size()) == 0) {
                return here;
            }
        }
    }
    return findPlainly(text, place);
}

#else

std::size_t ByteSearch::find(std::string_view text, std::size_t start) const {
    return findPlainly(text, start);
}

#endif

std::size_t ByteSearch::findPlainly(std::string_view text, std::size_t start) const {
    if (wanted_.empty()) {
        return start <= text.size() ? start : npos;
    }
    if (text.size() < wanted_.size()) {
        return npos;
    }
    const char* const data = text.data();
    const char* const end = data + (text.size() - wanted_.size()) + 1;
    const char* here = data + start;
    while (here < end) {
        const auto left = static_cast<std::size_t>(end - here);
        const void* const found = std::memchr(here + first_, wanted_[first_], left);
        if (found == nullptr) {
            return npos;
        }
        here = static_cast<const char*>(found) - first_;
        if (std::memcmp(here, wanted_.data(), wanted_.size()) == 0) {
            return static_cast<std::size_t>(here - data);
        }
        ++here;
    }
    return npos;
}

}  // namespace search
