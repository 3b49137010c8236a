#include "reader/SelectedText.hpp"

#include "page/WebView.hpp"
#include "reader/EpubWindow.hpp"

namespace pagora {

void SelectedText::didChange(const std::optional<PageSelection>& selection)
{
    if (selection)
        _window.showSelection(*selection);
    else
        _window.hideSelection();
}

void SelectedText::ask()
{
    _asking = evaluate(_window.webView(), "pagoraSelection.ask()");
}

void SelectedText::end()
{
    _window.hideSelection();
    _asking = evaluate(_window.webView(), "pagoraSelection.forget()");
}

void SelectedText::copy()
{
    _asking = copyText();
}

Task<void> SelectedText::copyText()
{
    const std::string text = co_await _window.webView().evaluateScript("pagoraSelection.text()");
    if (!text.empty())
        _window.copy(text);
}

}
