#include "Common/ImageViewExtensions.h"

#include "Common/Extensions.h"
#include "platform/net/Net.h"

#include <optional>
#include <utility>

namespace qor {

namespace {

std::optional<UIImage> decoded(const Data& data) {
    Result<UIImage> image = imageWithData(data);
    return image ? std::optional<UIImage>(std::move(image).value()) : std::nullopt;
}

void readInto(UIImageView& view, const URL& url) {
    const Result<Data> data = dataWithContentsOfURL(url);
    if (!data) {
        debugprint("UIImageView::loadFrom() : Could not encode image data.");
        return;
    }
    std::optional<UIImage> image = decoded(data.value());
    if (!image) {
        debugprint("UIImageView::loadFrom() : Could not assign image.");
        return;
    }
    view.setImage(std::move(image));
}

void show(UIImageView& view, const Result<NSURLSession::Answer>& answer) {
    if (!answer) {
        print(answer.error().debugDescription());
        return;
    }
    const auto* const http = dynamic_cast<const NSHTTPURLResponse*>(answer.value().response.get());
    if (http != nullptr && http->statusCode == 200) {
        print("Fetched image successfully");
        view.setImage(decoded(answer.value().data)); // no picture clears the view
    }
}

/// On the main queue. The view may go while the answer is awaited on another thread, so it is not kept.
void requestImageFromURL(const Ref<UIImageView>& view, const URL& url) {
    NSURLSession::sharedSession().data(
        URLRequest(url), [waiting = Weak<UIImageView>(view)](Result<NSURLSession::Answer>& answer) {
            if (const Ref<UIImageView> shown = waiting.lock()) {
                show(*shown, answer);
            }
        });
}

} // namespace

void loadFrom(const Ref<UIImageView>& view, const std::string& URLAddress) {
    const std::optional<URL> url = URL::initWithString(URLAddress);
    if (!url) {
        debugprint("UIImageView::loadFrom() : Could not encode url string : " + URLAddress);
        return;
    }
    dispatchAsyncMain([view, location = *url] { readInto(*view, location); });
}

void getImageFromURLString(const Ref<UIImageView>& view, const std::string& imageURLString) {
    const std::optional<URL> url = URL::initWithString(imageURLString);
    if (!url) {
        return;
    }
    dispatchAsyncMain([view, location = *url] { requestImageFromURL(view, location); });
}

} // namespace qor
