#include "platform/view/LayoutResource.h"

#include "platform/files/FileManager.h"
#include "platform/files/PropertyListSerialization.h"
#include "platform/view/LayoutLoader.h"

#include <utility>

namespace platform {

namespace {

NSError layoutError(std::string text) {
    return {LayoutErrorDomain, 1, {{NSLocalizedDescriptionKey, std::move(text)}}};
}

} // namespace

LayoutResource::LayoutResource(std::string name, PropertyList content)
    : name_(std::move(name)), content_(std::move(content)) {}

Result<LayoutResource> LayoutResource::load(const URL& file) {
    const auto data = FileManager::defaultManager().contentsAtPath(file.path());
    if (!data) {
        return layoutError(file.path() +
                           ": the layout of the editor can't be read; install the program anew");
    }
    NSPropertyListFormat format = 0;
    auto content = PropertyListSerialization::propertyListWithData(*data, NSPropertyListImmutable, format);
    if (!content) {
        return layoutError(file.path() + ": " + content.error().localizedDescription());
    }
    return LayoutResource(file.lastPathComponent(), std::move(content.value()));
}

Result<Ref<UIView>> LayoutResource::instantiate(std::string_view key, const LayoutBindings& bindings) const {
    const PropertyListDictionary* trees = content_.asDictionary();
    const PropertyList* source = trees == nullptr ? nullptr : trees->find(key);
    if (source == nullptr) {
        return layoutError(name_ + ": " + std::string(key) + ": there is no such view tree");
    }
    LayoutComplaint complaint;
    LayoutLoader loader(bindings, complaint);
    Ref<UIView> view = loader.makeView(*source, std::string(key));
    loader.finish(std::string(key));
    if (complaint.text()) {
        return layoutError(name_ + ": " + *complaint.text());
    }
    return view;
}

} // namespace platform
