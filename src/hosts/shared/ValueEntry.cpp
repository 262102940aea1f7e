#include "hosts/shared/ValueEntry.h"

#include "hosts/shared/ParameterUnits.h"

#include <utility>

namespace qor::host {

ValueEntry::ValueEntry(OnValue onValue, OnRefusal onRefusal)
    : onValue_(std::move(onValue)), onRefusal_(std::move(onRefusal)) {}

ValueEntry::~ValueEntry() {
    close();
}

void ValueEntry::open(UIView& host, const CGRect& place, const ParameterRow& row, float value) {
    close();
    row_ = &row;
    field_ = makeRef<UITextField>(place);
    field_->identifier = "valueEntry";
    field_->endsOnEscape = true;
    field_->setTextAlignment(NSTextAlignment::center);
    field_->setText(fixedText(static_cast<double>(value) * 100.0, 1) + " %");
    host.addSubview(field_);
    host.setNeedsLayout(); // the panel scales what is put on it when it lays out
    field_->addAction(UIControlEventEditingDidEndOnExit, [this](UIControl&) { take(); });
    field_->addAction(UIControlEventEditingDidEnd, [this](UIControl&) { close(); });
    field_->becomeFirstResponder();
}

void ValueEntry::take() {
    const std::string typed = field_->text().value_or("");
    if (const auto value = valueFromTypedText(*row_, typed)) {
        onValue_(*row_, *value);
    } else {
        onRefusal_(*row_);
    }
}

void ValueEntry::close() {
    if (const Ref<UITextField> field = std::exchange(field_, nullptr)) {
        field->removeAllActions();
        field->removeFromSuperview();
    }
}

} // namespace qor::host
