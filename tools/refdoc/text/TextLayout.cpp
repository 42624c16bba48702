#include "refdoc/text/TextLayout.hpp"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace refdoc {

namespace {

std::size_t characterWidth(UChar32 character) {
    if (character >= 0x20 && character < 0x7F)
        return 1;
    constexpr UChar32 softHyphen = 0xAD;
    if (character == softHyphen ||
        u_hasBinaryProperty(character, UCHAR_PREPENDED_CONCATENATION_MARK))
        return 1;
    constexpr std::uint32_t zeroWidth = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK | U_GC_CC_MASK;
    if ((U_GET_GC_MASK(character) & zeroWidth) != 0)
        return 0;
    const int syllablePart = u_getIntPropertyValue(character, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (syllablePart == U_HST_VOWEL_JAMO || syllablePart == U_HST_TRAILING_JAMO)
        return 0;
    const int eastAsian = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return eastAsian == U_EA_WIDE || eastAsian == U_EA_FULLWIDTH ? 2 : 1;
}

bool isAsciiGraph(char16_t unit) {
    return unit > u' ' && unit < 0x7F;
}

bool isInsideAsciiWord(std::u16string_view text, std::size_t position) {
    return position > 0 && position < text.size() && isAsciiGraph(text[position - 1]) &&
           isAsciiGraph(text[position]);
}

/// Whether an ASCII word begins at `position`, after a blank. A line may begin with it, whatever
/// the script's rules say about its first character: they know '/' and '.' only as punctuation.
bool beginsAsciiWord(std::u16string_view text, std::size_t position) {
    if (position == 0 || text[position - 1] != u' ' || !isAsciiGraph(text[position]))
        return false;
    const std::u16string_view word = text.substr(position, text.find(u' ', position) - position);
    return word.find_first_not_of(u".,:;!?)]}") != word.npos;
}

bool hasLetterOrDigit(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(), [](char16_t unit) { return u_isalnum(unit); });
}

/// A function's declaration that can be broken only after its commas; other syntax unchanged.
std::u16string withUnbreakableArguments(std::u16string_view line) {
    constexpr char16_t noBreakSpace = u'\u00A0';
    std::u16string text(line);
    for (std::size_t at = text.find(u'('); at < text.size(); ++at)
        if (text[at] == u' ' && text[at - 1] != u',')
            text[at] = noBreakSpace;
    return text;
}

/// Fills lines with the pieces of a text, each of which may end in blanks.
class LineFiller {
public:
    LineFiller(std::u16string_view text, std::size_t firstWidth, std::size_t otherWidth)
        : text_(text), available_(firstWidth), otherWidth_(otherWidth) {}

    bool fitsOnEmptyLine(TextRange piece) const { return inkWidth(piece) <= otherWidth_; }

    void add(TextRange piece) {
        if (piece.begin > line_.begin && usedWidth_ + inkWidth(piece) > available_)
            finishLine();
        line_.end = piece.end;
        usedWidth_ += displayWidth(text_.substr(piece.begin, piece.end - piece.begin));
    }

    std::vector<TextRange> take() {
        finishLine();
        return std::move(lines_);
    }

private:
    std::size_t inkEnd(TextRange range) const {
        while (range.end > range.begin && text_[range.end - 1] == u' ')
            --range.end;
        return range.end;
    }

    std::size_t inkWidth(TextRange range) const {
        return displayWidth(text_.substr(range.begin, inkEnd(range) - range.begin));
    }

    void finishLine() {
        if (inkEnd(line_) > line_.begin)
            lines_.push_back({line_.begin, inkEnd(line_)});
        line_.begin = line_.end;
        usedWidth_ = 0;
        available_ = otherWidth_;
    }

    std::u16string_view text_;
    std::size_t available_;
    std::size_t otherWidth_;
    TextRange line_{0, 0};
    std::size_t usedWidth_ = 0;
    std::vector<TextRange> lines_;
};

} // namespace

std::size_t displayWidth(std::u16string_view text) {
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        width += characterWidth(character);
    }
    return width;
}

std::u16string expandTabs(std::u16string_view text) {
    constexpr std::size_t tabWidth = 8;
    std::u16string result;
    std::size_t column = 0;
    for (std::size_t tab = text.find(u'\t'); tab != text.npos; tab = text.find(u'\t')) {
        column += displayWidth(text.substr(0, tab));
        const std::size_t blanks = tabWidth - column % tabWidth;
        result.append(text.substr(0, tab)).append(blanks, u' ');
        column += blanks;
        text.remove_prefix(tab + 1);
    }
    return result.append(text);
}

std::size_t syntaxHang(std::u16string_view line) {
    constexpr std::size_t widestHang = 24;
    constexpr std::size_t usualHang = 4;
    const std::size_t parenthesis = line.find(u'(');
    const std::size_t firstBlank = line.find(u' ', line.find_first_not_of(u' '));
    const std::size_t before = parenthesis != line.npos ? parenthesis : firstBlank;
    if (before == line.npos)
        return usualHang;
    const std::size_t hang = displayWidth(line.substr(0, before + 1));
    return hang <= widestHang ? hang : usualHang;
}

LineBreaker::LineBreaker() {
    UErrorCode status = U_ZERO_ERROR;
    iterator_.reset(ubrk_open(UBRK_LINE, "ja@lb=strict", nullptr, 0, &status));
    if (U_FAILURE(status))
        throw std::runtime_error("the rules for breaking lines cannot be loaded");
}

std::vector<std::size_t> LineBreaker::breakPositions(std::u16string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(iterator_.get(), text.data(), static_cast<std::int32_t>(text.size()), &status);
    if (U_FAILURE(status))
        return {text.size()};
    std::vector<std::size_t> positions;
    std::size_t from = 1;
    for (std::int32_t at = ubrk_next(iterator_.get()); at != UBRK_DONE;
         at = ubrk_next(iterator_.get())) {
        const auto position = static_cast<std::size_t>(at);
        for (; from < position; ++from)
            if (beginsAsciiWord(text, from))
                positions.push_back(from);
        positions.push_back(position);
        from = position + 1;
    }
    return positions;
}

std::vector<TextRange> LineBreaker::breakLines(std::u16string_view text, std::size_t firstWidth,
                                               std::size_t otherWidth) {
    LineFiller filler(text, firstWidth, otherWidth);
    std::vector<TextRange> wordParts;
    std::size_t wordBegin = 0;
    std::size_t partBegin = 0;
    std::size_t unread = 0;
    bool divisible = false; // a word is not divided before its first letter: never after "--"
    for (const std::size_t position : breakPositions(text)) {
        const bool inside = isInsideAsciiWord(text, position);
        divisible = divisible || hasLetterOrDigit(text.substr(unread, position - unread));
        unread = position;
        if (inside && !divisible)
            continue;
        wordParts.push_back({partBegin, position});
        partBegin = position;
        if (inside)
            continue;
        if (filler.fitsOnEmptyLine({wordBegin, position}))
            wordParts = {{wordBegin, position}};
        for (const TextRange part : wordParts)
            filler.add(part);
        wordParts.clear();
        wordBegin = position;
        divisible = false;
    }
    return filler.take();
}

std::vector<TextRange> LineBreaker::breakSyntax(std::u16string_view line, std::size_t firstWidth,
                                                std::size_t otherWidth) {
    std::vector<TextRange> lines =
        breakLines(withUnbreakableArguments(line), firstWidth, otherWidth);
    std::size_t available = firstWidth;
    for (const TextRange part : lines) {
        if (displayWidth(line.substr(part.begin, part.end - part.begin)) > available)
            return breakLines(line, firstWidth, otherWidth);
        available = otherWidth;
    }
    return lines;
}

} // namespace refdoc
