#include "refdoc/pages/Page.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "refdoc/text/Text.hpp"

namespace refdoc {

namespace {

/// The least room for text on a line, however deep the indentation and narrow the page.
constexpr std::size_t kNarrowestText = 16;
constexpr std::size_t kTagGap = 1;
constexpr std::string_view kStyleEnd = "\x1b[0m";

std::string_view styleBegin(Style style) {
    return style == Style::Bold ? "\x1b[1m" : "\x1b[4m";
}

std::u16string joined(const StyledText& text) {
    std::u16string all;
    for (const Span& span : text)
        all += span.text;
    return all;
}

StyledText printable(const StyledText& text) {
    StyledText result;
    for (const Span& span : text)
        result.push_back({refdoc::printable(span.text), span.style});
    return result;
}

/// Cuts a styled text into lines, which must be requested in the order of the text.
class Slicer {
public:
    explicit Slicer(const StyledText& text) : text_(text) {}

    StyledText slice(TextRange range) {
        StyledText result;
        for (; span_ < text_.size(); spanBegin_ += text_[span_++].text.size()) {
            const Span& span = text_[span_];
            const std::size_t spanEnd = spanBegin_ + span.text.size();
            const std::size_t begin = std::max(range.begin, spanBegin_);
            const std::size_t end = std::min(range.end, spanEnd);
            if (begin < end)
                result.push_back({span.text.substr(begin - spanBegin_, end - begin), span.style});
            if (spanEnd > range.end)
                break;
        }
        return result;
    }

private:
    const StyledText& text_;
    std::size_t span_ = 0;
    std::size_t spanBegin_ = 0;
};

} // namespace

Page::Page(PageFormat format) : format_(format) {}

void Page::marginLine(std::u16string_view left, std::u16string_view centre,
                      std::u16string_view right) {
    const std::array parts{refdoc::printable(left), refdoc::printable(centre),
                           refdoc::printable(right)};
    const std::size_t leftWidth = displayWidth(parts[0]);
    const std::size_t centreWidth = displayWidth(parts[1]);
    const std::size_t rightWidth = displayWidth(parts[2]);
    constexpr std::size_t gap = 2;
    if (leftWidth + centreWidth + rightWidth + 2 * gap > format_.width) {
        for (auto part = parts.begin(); part != parts.end(); ++part)
            if (std::find(parts.begin(), part, *part) == part)
                paragraph(*part, 0);
        return;
    }
    const std::size_t centreBegin = std::clamp((format_.width - centreWidth) / 2, leftWidth + gap,
                                               format_.width - rightWidth - gap - centreWidth);
    std::u16string line = parts[0];
    line.append(centreBegin - leftWidth, u' ').append(parts[1]);
    line.append(format_.width - centreBegin - centreWidth - rightWidth, u' ').append(parts[2]);
    line.erase(line.find_last_not_of(u' ') + 1);
    addLine({{line, Style::Plain}}, 0);
}

void Page::section(std::u16string_view title) {
    heading(title, 0);
}

void Page::subsection(std::u16string_view title) {
    heading(title, kSubsectionIndent);
}

void Page::heading(std::u16string_view title, std::size_t indent) {
    separate();
    paragraph({{std::u16string(title), Style::Bold}}, indent);
    afterHeading_ = true;
}

void Page::paragraph(const StyledText& text, std::size_t indent, std::size_t hang) {
    const StyledText clean = printable(text);
    addLines(clean,
             lineBreaker_.breakLines(joined(clean), roomAfter(indent), roomAfter(indent + hang)),
             indent, hang);
}

void Page::paragraph(std::u16string_view text, std::size_t indent) {
    paragraph({{std::u16string(text), Style::Plain}}, indent);
}

void Page::syntaxLine(std::u16string_view line, std::size_t indent) {
    const std::u16string clean = refdoc::printable(expandTabs(line));
    const std::size_t hang = syntaxHang(clean);
    addLines({{clean, Style::Bold}},
             lineBreaker_.breakSyntax(clean, roomAfter(indent), roomAfter(indent + hang)), indent,
             hang);
}

void Page::verbatim(std::u16string_view line, std::size_t indent) {
    addLine({{refdoc::printable(expandTabs(line)), Style::Plain}}, indent);
}

void Page::verbatim(const StyledText& line, std::size_t indent) {
    addLine(printable(line), indent);
}

void Page::tag(const StyledText& tag, std::size_t indent, std::size_t hang) {
    flushTag();
    StyledText clean = printable(tag);
    const std::size_t width = displayWidth(joined(clean));
    if (width + kTagGap > hang)
        return paragraph(clean, indent, hang);
    pendingTag_ = PendingTag{std::move(clean), indent, width};
}

void Page::separate() {
    flushTag();
    separated_ = !text_.empty() && !afterHeading_;
}

std::string Page::take() {
    flushTag();
    return std::exchange(text_, {});
}

void Page::flushTag() {
    if (pendingTag_)
        addLine({}, pendingTag_->indent + pendingTag_->width);
}

std::size_t Page::roomAfter(std::size_t indent) const {
    return std::max(format_.width, indent + kNarrowestText) - indent;
}

void Page::addLines(const StyledText& text, const std::vector<TextRange>& lines, std::size_t indent,
                    std::size_t hang) {
    Slicer slicer(text);
    std::size_t lineIndent = indent;
    for (const TextRange line : lines) {
        addLine(slicer.slice(line), lineIndent);
        lineIndent = indent + hang;
    }
}

void Page::addLine(const StyledText& line, std::size_t indent) {
    if (std::exchange(separated_, false))
        text_ += '\n';
    afterHeading_ = false;
    if (pendingTag_) {
        const PendingTag tag = *std::exchange(pendingTag_, std::nullopt);
        text_.append(tag.indent, ' ');
        for (const Span& span : tag.text)
            addSpan(span);
        indent -= std::min(indent, tag.indent + tag.width);
    }
    text_.append(indent, ' ');
    for (const Span& span : line)
        addSpan(span);
    text_ += '\n';
}

void Page::addSpan(const Span& span) {
    const bool styled = format_.styled && span.style != Style::Plain;
    if (styled)
        text_ += styleBegin(span.style);
    text_ += toUtf8(span.text);
    if (styled)
        text_ += kStyleEnd;
}

} // namespace refdoc
