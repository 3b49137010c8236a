#include "covers/gtk/CoverLoader.hpp"

#include "base/Resource.hpp"
#include "catalogue/BookTexts.hpp"
#include "covers/gtk/CellText.hpp"
#include "covers/gtk/DrawnCover.hpp"

#include <gdk/gdk.h>

#include <cstdlib>
#include <numeric>
#include <span>

namespace pagora {

struct CoverLoader::Request {
    BookInfoPtr book;
    std::optional<Data> data;
    Receiver receive;
};

namespace {

constexpr Size decodedSize { CoverLoader::coverSize.width * 2, CoverLoader::coverSize.height * 2 };
// Two encodings of the same picture differ by less than this, on average per byte of a pixel.
constexpr double maxDifference = 6;

std::optional<Image> decoded(const std::string& bytes)
{
    auto cover = Image::fromBytes(bytes, decodedSize);
    if (cover && (cover->size().width > decodedSize.width || cover->size().height > decodedSize.height))
        cover = cover->imageByScalingProportionallyToSize(decodedSize);
    return cover;
}

// Returns whether the cover is the default cover, encoded by this version or another one.
bool isDefaultCover(const Image& cover)
{
    static const auto bytes = resourceBytes("/org/pagora/Pagora/pagora_default_cover.jpg");
    static const auto known = bytes ? decoded(*bytes) : std::nullopt;
    if (!known || !(known->size() == cover.size()))
        return false;
    auto* const one = known->pixbuf();
    auto* const other = cover.pixbuf();
    if (gdk_pixbuf_get_byte_length(one) != gdk_pixbuf_get_byte_length(other))
        return false;
    const std::span ours(gdk_pixbuf_read_pixels(one), gdk_pixbuf_get_byte_length(one));
    const auto* const theirs = gdk_pixbuf_read_pixels(other);
    const long sum = std::inner_product(
        ours.begin(), ours.end(), theirs, 0L, std::plus<>(), [](int a, int b) { return std::abs(a - b); });
    return static_cast<double>(sum) < maxDifference * static_cast<double>(ours.size());
}

Image coverOf(const std::optional<Data>& data, const std::string& title, const std::string& author, int pixelsInPoint)
{
    auto cover = data ? decoded(data->bytes()) : std::nullopt;
    if (cover && !isDefaultCover(*cover))
        return *cover;
    return drawnCover(title, author, CoverLoader::coverSize, pixelsInPoint);
}

std::string textOnCover(const std::optional<std::string>& text)
{
    return standsForNone(text) ? std::string() : cellText(text).raw();
}

}

CoverLoader::CoverLoader(RunLoop& runLoop)
    : _runLoop(runLoop)
    , _self(std::make_shared<CoverLoader*>(this))
{
}

CoverLoader::~CoverLoader() = default;

CoverLoader::Ticket CoverLoader::load(const BookInfoPtr& book, int pixelsInPoint, Receiver receive)
{
    if (const auto cover = _cache.find(*book)) {
        receive(cover);
        return {};
    }
    auto ticket = std::make_shared<Request>(Request { book, book->imgData(), std::move(receive) });
    // The workers use only the bytes, the texts and the ticket, because the record belongs to the main thread.
    _workers[_nextWorker++ % _workers.size()].perform(
        [this, self = std::weak_ptr(_self), waiting = std::weak_ptr<Request>(ticket), data = ticket->data,
            title = textOnCover(book->title()), author = textOnCover(book->author()), pixelsInPoint] {
            if (waiting.expired())
                return;
            _runLoop.postToMainThread([this, self, waiting, cover = coverOf(data, title, author, pixelsInPoint)] {
                if (!self.expired())
                    this->receive(waiting, cover);
            });
        });
    return ticket;
}

void CoverLoader::receive(const std::weak_ptr<Request>& waiting, const Image& cover)
{
    const auto request = waiting.lock();
    if (!request)
        return;
    const auto texture = Glib::wrap(gdk_texture_new_for_pixbuf(cover.pixbuf()));
    _cache.insert(request->book.get(), request->data, texture);
    request->receive(texture);
}

}
