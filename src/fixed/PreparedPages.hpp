#pragma once

#include "page/WebView.hpp"
#include "running/Task.hpp"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pagora {

// A page view that consists of two: one is shown, the other loads the page that is likely to be next. A request for
// that page exchanges the two views and immediately delivers the reports of the prepared page and the results of
// scripts that were evaluated in it. Main thread only.
class PreparedPages : public WebView {
public:
    PreparedPages(std::unique_ptr<WebView> shown, std::unique_ptr<WebView> spare);
    ~PreparedPages() override;

    void setDelegate(WebViewDelegate* delegate) override { _delegate = delegate; }
    void setBookFolder(const std::string& path) override;
    std::uint64_t loadRequest(const Url& url) override;
    std::uint64_t currentLoad() const override;
    Reply<std::string> evaluateScript(const std::string& script) override;
    Reply<std::string> waitUntilDrawn() override;
    void prepareRequest(const Url& url, const std::vector<std::string>& scripts) override;
    void setTextSizeMultiplier(double multiplier) override;
    // Returns whether a page is ready to be shown immediately.
    bool isReady() const { return _ahead && _ahead->isDrawn; }
    Rect frame() const override { return shown().frame(); }
    double pixelSize() const override { return shown().pixelSize(); }
    void setHidden(bool hidden) override { shown().setHidden(hidden); }
    bool isHidden() const override { return shown().isHidden(); }
    void makeFirstResponder() override { shown().makeFirstResponder(); }

protected:
    // Called when the views were exchanged; the old one is still visible. `shown` is the index of the new one, 0 or 1.
    virtual void didExchange(std::size_t shown) { }

private:
    using Report = std::function<void(WebViewDelegate& delegate)>;
    class Side;
    // The prepared page: its reports so far and the results of its scripts.
    struct Ahead {
        Url url;
        std::uint64_t load = 0;
        std::vector<std::string> scripts;
        std::vector<Report> reports;
        std::map<std::string, std::string> answers;
        bool isBegun = false;
        bool isDrawn = false;
    };

    WebView& shown() const;
    WebView& spare() const;
    void report(const Side& side, std::uint64_t load, const Report& report);
    DataSource inOrder(DataSource source) const;
    void sideIsLoaded(const Side& side, std::uint64_t load);
    bool isAhead(const Url& url) const;
    Task<void> runAhead();
    void exchange();

    WebViewDelegate* _delegate = nullptr;
    std::array<std::unique_ptr<Side>, 2> _sides;
    std::size_t _shown = 0;
    // The difference between the shown view's load numbers and the reported ones. Each exchange counts as a load.
    std::uint64_t _loadOffset = 0;
    std::optional<Ahead> _ahead;
    // The load whose page has prepared results.
    std::uint64_t _answeredLoad = 0;
    std::map<std::string, std::string> _answers;
    bool _isDrawn = false;
    Task<void> _preparation;
};

}
