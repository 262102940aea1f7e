// A context that writes down what is drawn, one line an operation.
#pragma once

#include "platform/draw/CGContext.h"

#include <string>
#include <vector>

namespace platform {

/// For tests: the operations in order and as they were asked for, those that can't be seen included. Numbers
/// are the shortest texts that read back, angles in radians.
class RecordingContext final : public CGContext {
public:
    const std::vector<std::string>& lines() const { return lines_; }
    /// All lines, each with its line end.
    std::string text() const;

protected:
    bool wantsInvisible() const override { return true; }
    void onSave() override;
    void onRestore() override;
    void onTranslate(double tx, double ty) override;
    void onScale(double sx, double sy) override;
    void onRotate(double angle) override;
    void onDash() override;
    void onClip(const CGRect& rect) override;
    void onStroke(const UIBezierPath& path) override;
    void onFill(const UIBezierPath& path) override;
    void onText(const TextBlock& text, const CGPoint& origin, const UIColor& color) override;
    void onImage(const UIImage& image, const CGRect& rect) override;

private:
    std::vector<std::string> lines_;
};

} // namespace platform
