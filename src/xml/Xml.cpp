#include "xml/Xml.hpp"

#include "base/FileDescriptor.hpp"
#include "files/Files.hpp"
#include "xml/XmlScanner.hpp"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <sys/stat.h>

namespace pagora {

namespace {

const char* chars(const xmlChar* text)
{
    return reinterpret_cast<const char*>(text);
}

void ignoreMessage(void*, const char*, ...) { }

// Passes the library's callbacks to a delegate. The library creates further contexts for entities; each context points
// to the reader.
class Reader {
public:
    Reader(XmlDelegate& delegate, const XmlLimits& limits)
        : _delegate(delegate)
        , _limits(limits)
    {
    }

    XmlOutcome parse(const std::string& path);
    XmlOutcome parseBytes(std::string_view bytes);

private:
    struct ContextDeleter {
        void operator()(xmlParserCtxtPtr context) const
        {
            if (context->myDoc)
                xmlFreeDoc(context->myDoc);
            context->myDoc = nullptr;
            xmlFreeParserCtxt(context);
        }
    };
    using Context = std::unique_ptr<xmlParserCtxt, ContextDeleter>;

    // The number of bytes from which the library detects the encoding.
    static constexpr std::size_t startBytes = 4;
    // The size of one chunk.
    static constexpr std::size_t pieceBytes = 1 << 14;

    // `feedRest` passes the bytes after `start`.
    XmlOutcome parse(std::string_view start, const std::function<bool(xmlParserCtxtPtr)>& feedRest);
    static xmlSAXHandler handler();
    static Context makeContext(std::string_view start);
    bool readInto(int file, xmlParserCtxtPtr context);
    // Passes a chunk to the library. Returns false if the document ends here.
    bool feed(xmlParserCtxtPtr context, std::string_view bytes, bool last);
    // Checked before the subset is parsed. The chunk may also contain the first elements, which are not counted.
    bool isDocumentTypeTooLarge() const
    {
        return _elements == 0 && !_documentTypeIsRead
            && _scanner.bytesOfDocumentType() > _limits.subsetBytes + pieceBytes;
    }
    void fail(const std::string& description, XmlOutcome outcome = XmlOutcome::NotWellFormed);
    void failPastBounds(const std::string& description) { fail(description, XmlOutcome::PastBounds); }
    void checkFull();
    void flush();
    void count(std::size_t bytes);

    // Runs `body` unless parsing has failed. No exception reaches the C library.
    template <typename Body>
    static void guarded(void* context, Body body)
    {
        auto* parser = static_cast<xmlParserCtxtPtr>(context);
        auto& reader = *static_cast<Reader*>(parser->_private);
        if (!reader._failed) {
            try {
                body(reader);
                reader.checkFull();
            } catch (const std::bad_alloc& error) {
                reader.failPastBounds(error.what());
            } catch (const std::exception& error) {
                reader.fail(error.what());
            }
        }
        if (reader._failed) {
            xmlStopParser(parser);
            // Entity content is parsed in a context of its own.
            if (reader._document != parser)
                xmlStopParser(reader._document);
        }
    }

    static void startElement(void* context, const xmlChar* name, const xmlChar** attributes);
    static void endElement(void* context, const xmlChar* name);
    static void characters(void* context, const xmlChar* text, int length);
    static void cdata(void* context, const xmlChar* text, int length);
    static void beginSubset(void* context, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId);
    static void endSubset(void* context, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId);
    static void declareEntity(void* context, const xmlChar* name, int type, const xmlChar* publicId,
        const xmlChar* systemId, xmlChar* content);

    XmlDelegate& _delegate;
    const XmlLimits& _limits;
    xmlParserCtxtPtr _document = nullptr;
    // Character data since the last boundary.
    std::string _text;
    XmlScanner _scanner;
    std::size_t _bytesRead = 0;
    // Offset of the internal subset, as counted by the library.
    std::optional<std::size_t> _subsetBegin;
    bool _documentTypeIsRead = false;
    std::size_t _bytesTold = 0;
    std::size_t _elements = 0;
    int _depth = 0;
    bool _failed = false;
    XmlOutcome _outcome = XmlOutcome::Whole;
};

void Reader::fail(const std::string& description, XmlOutcome outcome)
{
    if (!_failed) {
        _failed = true;
        _outcome = outcome;
        _delegate.parseErrorOccurred(description);
    }
}

void Reader::checkFull()
{
    if (!_failed && _delegate.isFull())
        failPastBounds("the document holds too much");
}

void Reader::flush()
{
    if (_text.empty())
        return;
    std::string piece;
    piece.swap(_text);
    _delegate.foundCharacters(piece);
    checkFull();
}

void Reader::count(std::size_t bytes)
{
    _bytesTold += bytes;
    if (_bytesTold > _limits.freeExpansion && _bytesTold / _limits.expansionRatio > _bytesRead)
        failPastBounds("entities expand to too much text");
}

void Reader::startElement(void* context, const xmlChar* name, const xmlChar** attributes)
{
    guarded(context, [&](Reader& reader) {
        reader.flush();
        if (reader._failed)
            return;
        if (++reader._depth > reader._limits.depth)
            return reader.failPastBounds("elements are nested too deep");
        if (++reader._elements > reader._limits.elements)
            return reader.failPastBounds("too many elements");
        std::size_t attributeCount = 0;
        XmlAttributes list;
        for (auto at = attributes; at && at[0]; at += 2) {
            if (++attributeCount > reader._limits.attributes)
                return reader.failPastBounds("an element has too many attributes");
            const auto* value = at[1] ? chars(at[1]) : "";
            reader.count(std::strlen(value));
            list.add(chars(at[0]), value);
        }
        if (!reader._failed)
            reader._delegate.didStartElement(chars(name), list);
    });
}

void Reader::endElement(void* context, const xmlChar* name)
{
    guarded(context, [&](Reader& reader) {
        reader.flush();
        --reader._depth;
        if (!reader._failed)
            reader._delegate.didEndElement(chars(name));
    });
}

void Reader::characters(void* context, const xmlChar* text, int length)
{
    guarded(context, [&](Reader& reader) {
        std::string_view rest(chars(text), static_cast<std::size_t>(length));
        reader.count(rest.size());
        while (!reader._failed && !rest.empty()) {
            const auto lineBreak = rest.find('\n');
            const auto piece = rest.substr(0, lineBreak == std::string_view::npos ? lineBreak : lineBreak + 1);
            reader._text.append(piece);
            rest.remove_prefix(piece.size());
            if (lineBreak != std::string_view::npos)
                reader.flush();
        }
    });
}

void Reader::cdata(void* context, const xmlChar* text, int length)
{
    guarded(context, [&](Reader& reader) {
        reader.flush();
        reader.count(static_cast<std::size_t>(length));
        if (!reader._failed)
            reader._delegate.foundCDATA({ chars(text), static_cast<std::size_t>(length) });
    });
}

std::size_t placeIn(const xmlParserCtxt& context)
{
    const auto* input = context.input;
    return input ? static_cast<std::size_t>(input->consumed) + static_cast<std::size_t>(input->cur - input->base) : 0;
}

void Reader::beginSubset(void* context, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId)
{
    xmlSAX2InternalSubset(context, name, publicId, systemId);
    guarded(context, [&](Reader& reader) { reader._subsetBegin = placeIn(*static_cast<xmlParserCtxtPtr>(context)); });
}

void Reader::endSubset(void* context, const xmlChar*, const xmlChar*, const xmlChar*)
{
    guarded(context, [&](Reader& reader) {
        const auto end = placeIn(*static_cast<xmlParserCtxtPtr>(context));
        if (reader._subsetBegin && end - *reader._subsetBegin > reader._limits.subsetBytes)
            reader.failPastBounds("the document type declares too much");
        reader._documentTypeIsRead = true;
    });
}

// Declares external entities as empty, so that the library never fetches anything.
void Reader::declareEntity(
    void* context, const xmlChar* name, int type, const xmlChar* publicId, const xmlChar* systemId, xmlChar* content)
{
    xmlChar nothing[] = { 0 };
    switch (type) {
    case XML_EXTERNAL_GENERAL_PARSED_ENTITY:
        return xmlSAX2EntityDecl(context, name, XML_INTERNAL_GENERAL_ENTITY, nullptr, nullptr, nothing);
    case XML_EXTERNAL_PARAMETER_ENTITY:
        return xmlSAX2EntityDecl(context, name, XML_INTERNAL_PARAMETER_ENTITY, nullptr, nullptr, nothing);
    case XML_INTERNAL_GENERAL_ENTITY:
    case XML_INTERNAL_PARAMETER_ENTITY:
        return xmlSAX2EntityDecl(context, name, type, nullptr, nullptr, content);
    default:
        return;
    }
}

// Without namespace handlers the library reports qualified names, and namespace declarations as attributes.
xmlSAXHandler Reader::handler()
{
    xmlSAXHandler sax {};
    sax.initialized = 1;
    sax.startDocument = xmlSAX2StartDocument;
    sax.internalSubset = beginSubset;
    sax.externalSubset = endSubset;
    sax.isStandalone = xmlSAX2IsStandalone;
    sax.hasInternalSubset = xmlSAX2HasInternalSubset;
    sax.hasExternalSubset = xmlSAX2HasExternalSubset;
    sax.getEntity = xmlSAX2GetEntity;
    sax.getParameterEntity = xmlSAX2GetParameterEntity;
    sax.entityDecl = declareEntity;
    sax.startElement = startElement;
    sax.endElement = endElement;
    sax.characters = characters;
    sax.ignorableWhitespace = characters;
    sax.cdataBlock = cdata;
    // Errors are read after each chunk; these handlers keep the library from printing them.
    sax.warning = ignoreMessage;
    sax.error = ignoreMessage;
    return sax;
}

Reader::Context Reader::makeContext(std::string_view start)
{
    static std::once_flag initialized;
    std::call_once(initialized, xmlInitParser);
    auto sax = handler();
    Context context(xmlCreatePushParserCtxt(&sax, nullptr, start.data(), static_cast<int>(start.size()), nullptr));
    if (!context)
        throw std::bad_alloc();
    xmlCtxtUseOptions(context.get(), XML_PARSE_NOENT | XML_PARSE_NONET);
    return context;
}

bool Reader::feed(xmlParserCtxtPtr context, std::string_view bytes, bool last)
{
    _bytesRead += bytes.size();
    if (_bytesRead > _limits.bytes)
        failPastBounds("the document is too large");
    else if (!_scanner.count(bytes, _limits.attributes))
        failPastBounds("an element has too many attributes");
    else if (isDocumentTypeTooLarge())
        failPastBounds("the document type declares too much");
    else
        xmlParseChunk(context, bytes.data(), static_cast<int>(bytes.size()), last);
    if (!_failed && !context->wellFormed) {
        const auto* error = xmlCtxtGetLastError(context);
        std::string description = error && error->message ? error->message : "the document is not well-formed";
        while (description.ends_with('\n'))
            description.pop_back();
        if (error && error->line > 0)
            description = "line " + std::to_string(error->line) + ": " + description;
        // The library limits entity expansion as well.
        fail(description,
            error && (error->code == XML_ERR_ENTITY_LOOP || error->code == XML_ERR_NO_MEMORY)
                ? XmlOutcome::PastBounds
                : XmlOutcome::NotWellFormed);
    }
    return !_failed;
}

bool Reader::readInto(int file, xmlParserCtxtPtr context)
{
    const auto buffer = std::make_unique_for_overwrite<std::array<char, pieceBytes>>();
    for (;;) {
        const auto got = ::read(file, buffer->data(), buffer->size());
        if (got < 0)
            fail("the file cannot be read");
        if (got <= 0)
            return !_failed;
        if (!feed(context, { buffer->data(), static_cast<std::size_t>(got) }, false))
            return false;
    }
}

XmlOutcome Reader::parse(const std::string& path)
{
    const auto file = openFile(path);
    struct stat info { };
    if (!file)
        fail("the file cannot be read");
    else if (::fstat(file.get(), &info) == 0 && static_cast<std::uint64_t>(info.st_size) > _limits.bytes)
        failPastBounds("the document is too large");
    if (_failed)
        return _outcome;
    std::array<char, startBytes> start {};
    const auto got = ::read(file.get(), start.data(), start.size());
    return parse({ start.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)) },
        [&](xmlParserCtxtPtr context) { return readInto(file.get(), context); });
}

XmlOutcome Reader::parseBytes(std::string_view bytes)
{
    return parse(bytes.substr(0, startBytes), [&](xmlParserCtxtPtr context) {
        for (auto at = startBytes; at < bytes.size(); at += pieceBytes) {
            if (!feed(context, bytes.substr(at, pieceBytes), false))
                return false;
        }
        return true;
    });
}

XmlOutcome Reader::parse(std::string_view start, const std::function<bool(xmlParserCtxtPtr)>& feedRest)
{
    if (start.size() < startBytes) {
        fail("the document is empty");
        return _outcome;
    }
    _bytesRead = start.size();
    _scanner.begin(start);
    const auto context = makeContext(start);
    context->_private = this;
    _document = context.get();
    if (!feedRest(context.get()) || !feed(context.get(), {}, true))
        return _outcome;
    flush();
    if (!_failed)
        _delegate.didEndDocument();
    return _outcome;
}

}

XmlOutcome parseXml(const std::string& path, XmlDelegate& delegate, const XmlLimits& limits)
{
    return Reader(delegate, limits).parse(path);
}

XmlOutcome parseXmlBytes(std::string_view bytes, XmlDelegate& delegate, const XmlLimits& limits)
{
    return Reader(delegate, limits).parseBytes(bytes);
}

}
