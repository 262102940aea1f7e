#include "platform/draw/RecordingContext.h"

#include "platform/draw/NumberText.h"
#include "platform/draw/TextBlock.h"
#include "platform/draw/UIImage.h"

#include <initializer_list>

namespace platform {

namespace {

std::string lineOf(std::string_view word, std::initializer_list<double> numbers = {}) {
    std::string line(word);
    for (const double number : numbers) {
        appendNumber(line, number);
    }
    return line;
}

std::string colorText(const UIColor& color) {
    return lineOf(" color", {color.red(), color.green(), color.blue(), color.alpha()});
}

std::string_view capText(CGLineCap cap) {
    switch (cap) {
    case CGLineCap::round:
        return " cap round";
    case CGLineCap::square:
        return " cap square";
    case CGLineCap::butt:
        break;
    }
    return " cap butt";
}

std::string_view joinText(CGLineJoin join) {
    switch (join) {
    case CGLineJoin::round:
        return " join round";
    case CGLineJoin::bevel:
        return " join bevel";
    case CGLineJoin::miter:
        break;
    }
    return " join miter";
}

std::string_view alignmentText(NSTextAlignment alignment) {
    switch (alignment) {
    case NSTextAlignment::center:
        return " align center";
    case NSTextAlignment::right:
        return " align right";
    case NSTextAlignment::left:
        break;
    }
    return " align left";
}

} // namespace

std::string RecordingContext::text() const {
    std::string all;
    for (const std::string& line : lines_) {
        all += line;
        all += '\n';
    }
    return all;
}

void RecordingContext::onSave() {
    lines_.emplace_back("save");
}

void RecordingContext::onRestore() {
    lines_.emplace_back("restore");
}

void RecordingContext::onTranslate(double tx, double ty) {
    lines_.push_back(lineOf("translate", {tx, ty}));
}

void RecordingContext::onScale(double sx, double sy) {
    lines_.push_back(lineOf("scale", {sx, sy}));
}

void RecordingContext::onRotate(double angle) {
    lines_.push_back(lineOf("rotate", {angle}));
}

void RecordingContext::onDash() {
    std::string line = lineOf("dash phase", {state().dashPhase});
    line += " lengths";
    for (const double length : state().dashLengths) {
        appendNumber(line, length);
    }
    lines_.push_back(std::move(line));
}

void RecordingContext::onClip(const CGRect& rect) {
    lines_.push_back(lineOf("clip", {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height}));
}

void RecordingContext::onStroke(const UIBezierPath& path) {
    std::string line = "stroke " + path.description() + lineOf(" width", {path.lineWidth()});
    line += capText(path.lineCapStyle());
    line += joinText(path.lineJoinStyle());
    lines_.push_back(line + colorText(state().stroke));
}

void RecordingContext::onFill(const UIBezierPath& path) {
    lines_.push_back("fill " + path.description() + colorText(state().fill));
}

void RecordingContext::onText(const TextBlock& text, const CGPoint& origin, const UIColor& color) {
    const TextBlockKey key = text.key();
    std::string line = "text \"";
    line += key.text;
    line += lineOf("\" at", {origin.x, origin.y}) + lineOf(" width", {key.width}) + " font ";
    line += key.font.fontName();
    appendNumber(line, key.font.pointSize());
    line += alignmentText(key.alignment);
    lines_.push_back(line + colorText(color));
}

void RecordingContext::onImage(const UIImage& image, const CGRect& rect) {
    std::string line =
        lineOf("image", {static_cast<double>(image.pixelWidth()), static_cast<double>(image.pixelHeight())});
    lines_.push_back(line + lineOf(" in", {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height}));
}

} // namespace platform
