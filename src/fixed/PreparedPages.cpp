#include "fixed/PreparedPages.hpp"

#include <utility>

namespace pagora {

// One of the two views, and its reports.
class PreparedPages::Side : public WebViewDelegate {
public:
    Side(PreparedPages& pages, std::unique_ptr<WebView> page)
        : view(std::move(page))
        , _pages(pages)
    {
        view->setDelegate(this);
    }
    ~Side() override { view->setDelegate(nullptr); }

    void resourceDidFinishLoading(const DataSource& source) override
    {
        tell(&WebViewDelegate::resourceDidFinishLoading, source);
    }
    void didFinishLoadForFrame(const DataSource& source) override
    {
        tell(&WebViewDelegate::didFinishLoadForFrame, source);
        _pages.sideIsLoaded(*this, source.load);
    }
    void resourceDidFailLoading(const DataSource& source) override
    {
        tell(&WebViewDelegate::resourceDidFailLoading, source);
    }
    void didCommitLoad(const DataSource& source) override { tell(&WebViewDelegate::didCommitLoad, source); }
    void resourceWillSendRequest(const Url& url, RequestedBy requestedBy) override
    {
        note([url, requestedBy](WebViewDelegate& delegate) { delegate.resourceWillSendRequest(url, requestedBy); });
    }
    void decidePolicyForMIMEType(const std::string& type) override
    {
        note([type](WebViewDelegate& delegate) { delegate.decidePolicyForMIMEType(type); });
    }
    void didChangeLocationWithinPage(const Url& url) override
    {
        note([url](WebViewDelegate& delegate) { delegate.didChangeLocationWithinPage(url); });
    }
    void pageFollowsLink() override
    {
        note([](WebViewDelegate& delegate) { delegate.pageFollowsLink(); });
    }
    void selectionDidChange(const std::optional<PageSelection>& selection) override
    {
        if (isShown())
            _pages._delegate->selectionDidChange(selection);
    }
    void pressesMark(const PressedMark& mark) override
    {
        if (isShown())
            _pages._delegate->pressesMark(mark);
    }
    void didResize() override
    {
        if (isShown())
            _pages._delegate->didResize();
    }

    const std::unique_ptr<WebView> view;

private:
    void tell(void (WebViewDelegate::*report)(const DataSource&), const DataSource& source)
    {
        _pages.report(*this, source.load,
            [this, report, source](WebViewDelegate& delegate) { (delegate.*report)(_pages.inOrder(source)); });
    }
    bool isShown() const { return this == _pages._sides[_pages._shown].get() && _pages._delegate; }
    void note(const Report& report) { _pages.report(*this, view->currentLoad(), report); }

    PreparedPages& _pages;
};

PreparedPages::PreparedPages(std::unique_ptr<WebView> shown, std::unique_ptr<WebView> spare)
    : _sides { std::make_unique<Side>(*this, std::move(shown)), std::make_unique<Side>(*this, std::move(spare)) }
{
    this->spare().setHidden(true);
}

PreparedPages::~PreparedPages() = default;

WebView& PreparedPages::shown() const
{
    return *_sides[_shown]->view;
}

WebView& PreparedPages::spare() const
{
    return *_sides[1 - _shown]->view;
}

void PreparedPages::setBookFolder(const std::string& path)
{
    _ahead.reset();
    shown().setBookFolder(path);
    spare().setBookFolder(path);
}

void PreparedPages::setTextSizeMultiplier(double multiplier)
{
    shown().setTextSizeMultiplier(multiplier);
    spare().setTextSizeMultiplier(multiplier);
}

std::uint64_t PreparedPages::currentLoad() const
{
    return shown().currentLoad() + _loadOffset;
}

DataSource PreparedPages::inOrder(DataSource source) const
{
    source.load += _loadOffset;
    return source;
}

void PreparedPages::report(const Side& side, std::uint64_t load, const Report& report)
{
    if (&side == _sides[_shown].get()) {
        if (_delegate)
            report(*_delegate);
    } else if (_ahead && _ahead->load == load)
        _ahead->reports.push_back(report);
}

bool PreparedPages::isAhead(const Url& url) const
{
    // The page is not the prepared one if it has navigated by itself.
    return _ahead && _ahead->url == url && _ahead->load == spare().currentLoad();
}

std::uint64_t PreparedPages::loadRequest(const Url& url)
{
    if (isAhead(url))
        exchange();
    else
        shown().loadRequest(url);
    return currentLoad();
}

void PreparedPages::exchange()
{
    Ahead ahead = std::move(*_ahead);
    _ahead.reset();
    _preparation = {};
    const std::uint64_t next = currentLoad() + 1;
    auto& old = shown();
    _shown = 1 - _shown;
    _loadOffset = next - ahead.load;
    _answeredLoad = next;
    _answers = std::move(ahead.answers);
    _isDrawn = ahead.isDrawn;
    didExchange(_shown);
    shown().setHidden(old.isHidden());
    old.setHidden(true);
    for (const auto& report : ahead.reports) {
        if (_delegate && currentLoad() == next)
            report(*_delegate);
    }
}

void PreparedPages::prepareRequest(const Url& url, const std::vector<std::string>& scripts)
{
    if (isAhead(url))
        return;
    _preparation = {};
    _ahead = Ahead { url, 0, scripts, {}, {} };
    const std::uint64_t load = spare().loadRequest(url);
    if (_ahead)
        _ahead->load = load;
}

void PreparedPages::sideIsLoaded(const Side& side, std::uint64_t load)
{
    if (&side == _sides[_shown].get() || !_ahead || _ahead->load != load || _ahead->isBegun)
        return;
    _ahead->isBegun = true;
    _preparation = runAhead();
}

Task<void> PreparedPages::runAhead()
{
    // Copied, because preparing or showing another page destroys the original.
    const auto scripts = _ahead->scripts;
    for (const auto& script : scripts) {
        std::string answer = co_await spare().evaluateScript(script);
        _ahead->answers[script] = std::move(answer);
    }
    co_await spare().waitUntilDrawn();
    _ahead->isDrawn = true;
}

Reply<std::string> PreparedPages::evaluateScript(const std::string& script)
{
    if (_answeredLoad == currentLoad()) {
        if (auto known = _answers.extract(script))
            return Reply<std::string>::of(std::move(known.mapped()));
    }
    return shown().evaluateScript(script);
}

Reply<std::string> PreparedPages::waitUntilDrawn()
{
    if (_answeredLoad == currentLoad() && std::exchange(_isDrawn, false))
        return Reply<std::string>::of();
    return shown().waitUntilDrawn();
}

}
