// A window of the app's own, as a test drives it: it keeps the content and
// title last shown, counts showings and closings, and can build and lay out
// the content's tree the way a host would.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "OrvikKit/HostedContent.h"

namespace testsupport {

class FakeContentWindow final : public orvik::ContentWindow {
public:
    void show(std::shared_ptr<orvik::HostedContent> content, std::string_view title) override {
        ++showCount;
        this->content = std::move(content);
        this->title = std::string(title);
        this->content->willShow();
        shown = true;
    }
    void close() override {
        ++closeCount;
        shown = false;
    }
    bool isShown() const override { return shown; }

    std::shared_ptr<orvik::HostedContent> content;  // the content last shown
    std::string title;                              // its title
    bool shown = false;
    int showCount = 0;
    int closeCount = 0;
};

}  // namespace testsupport
