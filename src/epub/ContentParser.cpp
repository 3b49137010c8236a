#include "epub/ContentParser.hpp"

#include "base/Path.hpp"

namespace pagora {

namespace {

std::string normalized(const std::string& name)
{
    constexpr std::string_view prefix = "ncx:";
    auto lower = lowercased(name);
    const auto at = lower.find(prefix);
    return at == std::string::npos ? lower : lower.substr(at + prefix.size());
}

}

void ContentParser::parse()
{
    _navLevel = 0;
    _textBytes = 0;
    _currentSrc.reset();
    _currentLabel.clear();
    _outcome = parseXml(_xmlFile.path(), *this);
}

void ContentParser::didStartElement(const std::string& elementName, const XmlAttributes& attributes)
{
    const auto name = normalized(elementName);
    if (name == "navpoint") {
        ++_navLevel;
    } else if (name == "content") {
        const auto* src = attributes.find("src");
        _currentSrc = src ? std::optional(*src) : std::nullopt;
    }
}

bool ContentParser::isFull() const
{
    constexpr BookLimits limits;
    return _contentList.size() > limits.contentsEntries || _currentLabel.size() > limits.textBytes
        || _textBytes > limits.entryBytes;
}

void ContentParser::foundCharacters(const std::string& text)
{
    _currentLabel += trimmed(text);
}

void ContentParser::foundCDATA(const std::string& text)
{
    foundCharacters(text);
}

void ContentParser::didEndElement(const std::string& elementName)
{
    const auto name = normalized(elementName);
    if (name == "doctitle") {
        _currentLabel.clear();
    } else if (name == "navpoint") {
        --_navLevel;
    } else if (name == "content") {
        Value::Dictionary entry;
        _textBytes += _currentLabel.size() + (_currentSrc ? _currentSrc->size() : 0);
        if (_currentSrc)
            entry = { { "src", *_currentSrc }, { "text", _currentLabel }, { "level", static_cast<int>(_navLevel) } };
        _contentList.emplace_back(std::move(entry));
        _currentLabel.clear();
    }
}

}
