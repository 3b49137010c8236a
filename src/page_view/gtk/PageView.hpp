#pragma once

#include "base/GObjectPtr.hpp"
#include "confinement/MessageBudget.hpp"
#include "confinement/gtk/PacedDecisions.hpp"
#include "page/WebView.hpp"
#include "page/gtk/LoadReports.hpp"
#include "page/gtk/PageContent.hpp"
#include "page/gtk/PageCurtain.hpp"
#include "page/gtk/PageFrame.hpp"
#include "page/gtk/PageRecovery.hpp"
#include "page/gtk/PageScripts.hpp"
#include "page/gtk/PageSizeReports.hpp"
#include "page/gtk/RestingPage.hpp"
#include "page/gtk/SpokenPage.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace pagora {

// The page view on top of the engine's widget. A load that the page itself requested (a link within the book) and the
// reload after a crash of the engine are numbered as separate loads. Created by a `PageEngine`, which must outlive it.
// Main thread only.
class PageView final : public WebView {
public:
    // `scriptTimeout`, in seconds, limits a script, the start of a page and the images of a fixed page; large pages get
    // more time. `WarmingUp`: the engine first loads its warm-up page.
    enum class Start : bool { Ready, WarmingUp };
    PageView(GObjectPtr<WebKitWebView> view, PageKind kind, BookFilter& filter, double scriptTimeout,
        Start start = Start::Ready);
    ~PageView() override;

    // Returns the widget for the window.
    Gtk::Widget& widget() { return _frame; }
    // Space around the page: the minimum margin at each side in pixels, and the maximum width of the page in points.
    struct PageMargins {
        int minSide = 0;
        int maxWidth = 0;
    };
    void setMargins(const PageMargins& margins);
    void setFlickHandler(std::function<void(double dx)> handler) { _frame.setFlickHandler(std::move(handler)); }
    // Sets the callback for a picture that the user presses, if it is a file of the book. Without it, the page itself
    // shows the picture.
    void setPictureHandler(std::function<void(const std::string& file)> handler);
    // Returns the engine's widget, for pictures of the page and for tests.
    WebKitWebView* engineView() const { return _view.get(); }

    void setDelegate(WebViewDelegate* delegate) override { _reports.setDelegate(delegate); }
    void setBookFolder(const std::string& path) override;
    void setPageStart(const PageStart& start) override { _pageStart = start; }
    std::uint64_t loadRequest(const Url& url) override;
    std::uint64_t currentLoad() const override { return _reports.currentLoad(); }
    Reply<std::string> waitUntilDrawn() override { return _scripts.waitUntilDrawn(); }
    Reply<std::string> evaluateScript(const std::string& script) override;
    void pageIsPrepared() override;
    void showUntilDrawn(const PagePicture& picture) override;
    void pageRests() override;
    std::optional<PagePicture> pictureAtRest() override;
    void prepareForUserAction() override { _curtain.hurry(); }
    // Sets the colour behind the page.
    void setBackground(const Color& color);
    // Sets the callback for the background of the page's document; nullopt if it has none.
    void setGroundHandler(std::function<void(const std::optional<Color>& ground)> handler);
    // Sets the function that makes the page's accessible name from its document's title.
    void setNamer(std::function<std::string(const std::string& title)> namer) { _spoken.setNamer(std::move(namer)); }
    // Replaces the page's accessible text.
    void setNotice(const std::string& notice) { _spoken.setNotice(notice); }
    void nameMayHaveChanged() { _spoken.pageMayHaveChanged(); }
    const SpokenPage& spoken() const { return _spoken; }
    // Returns whether a control in the page has the keyboard focus.
    bool pageTakesKeys() const { return _frame.pageTakesKeys(); }
    // Returns whether the page shows an enlarged picture, which the Escape key closes.
    bool pageTakesEscape() const { return _document.takesEscape; }
    // Returns whether the text and the pages run from right to left.
    bool runsRightToLeft() const { return _document.runsRightToLeft; }

    void setTextSizeMultiplier(double multiplier) override;
    Rect frame() const override;
    double pixelSize() const override;
    void setHidden(bool hidden) override;
    bool isHidden() const override { return _frame.isConcealed(); }
    void makeFirstResponder() override;

private:
    // `Waiting`: for the filter or the warm-up page. `Starting`: requested, but not started by the engine. `Shown`:
    // started, so that the engine's events belong to this load.
    enum class Stage { Idle, Waiting, Starting, Shown };

    void connectEngine();
    void begin(const Url& url);
    void warmUpNoLongerThan(double seconds);
    void startWhenReady();
    void start();
    void loadFresh();
    void numberScripts();
    void pageStartIsOver();
    void failSoon();
    void expectDocument();
    void documentComplete();
    void showForgivingly();
    void restartEngineAfter(double seconds);
    void restartEngine();
    void endProcesses();
    void pageClosedItself();
    void recover();
    void textScaleDidChange();
    void applyMargins();
    bool isWithinBudget(MessageBudget::Message message, const char* text);
    void endFlood();
    void frameDidChange();
    void reportFailure();
    void coverUntilPrepared();
    bool isPageOfTarget() const;
    bool isTarget(const Url& url) const;
    bool isInBook(const Url& url) const;
    bool mayBeRead(const std::string& path) const;
    static bool isWithinPage(const Url& url);

    // Handles the engine's load events.
    void loadChanged(WebKitLoadEvent event);
    void loadFailed(const char* uri, const GError* error);
    // Called when a navigation of the page, or the requested load, shows nothing.
    void stepFailed(const Url& url);
    void resourceStarted(WebKitWebResource* resource, WebKitURIRequest* request);
    void resourceEnded(WebKitWebResource* resource, std::uint64_t load, bool failed);
    // `Given`: the decision is made here, or later.
    enum class Answer { Use, Ignore, Given };
    Answer decideNavigation(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    Answer letGoInTurn(WebKitPolicyDecision* decision, const Url& url, bool byUser);
    Answer decideResponse(WebKitResponsePolicyDecision* decision);
    void locationChanged();
    void messageReceived(const std::string& message);
    friend struct PageViewSignals;

    GObjectPtr<WebKitWebView> _view;
    // In seconds. The timeout of the current document depends on its size.
    struct Timeouts {
        double script;
        double document;
    };
    Timeouts _timeouts;
    LoadReports _reports;
    // Limits the messages of the page.
    MessageBudget _budget;
    // Limits the page's navigations to servers.
    PacedDecisions _steps;
    PageScripts _scripts;
    PageFrame _frame;
    SpokenPage _spoken;
    // Disables the scripts of a book that have blocked the engine.
    PageContent _content;
    PageCurtain _curtain;
    RestingPage _resting;
    PageSizeReports _sizes;
    PageRecovery _recovery;

    // True if the engine is still loading the warm-up page.
    bool _isWarmingUp;
    Stage _stage = Stage::Idle;
    // The last URL that was passed to the engine, and the URL of the shown page.
    std::optional<Url> _target;
    std::optional<Url> _shown;
    struct Document {
        // True if the page is parsed as HTML because it is not well-formed.
        bool isForgiven = false;
        bool runsRightToLeft = false;
        bool takesEscape = false;
    };
    Document _document;
    std::function<void(const std::string&)> _onPicture;
    PageStart _pageStart;
    std::optional<PageMargins> _margins;
    sigc::connection _startTimer;
    sigc::connection _loadTimer;
    sigc::connection _textScaleChanges;
    // Expires with the view. Used by callbacks that run later.
    std::shared_ptr<PageView*> _self;
};

}
