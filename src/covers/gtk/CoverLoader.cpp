#include "covers/gtk/CoverLoader.hpp"

#include "base/Resource.hpp"

#include <gdk/gdk.h>

namespace pagora {

struct CoverLoader::Request {
    BookInfoPtr book;
    Data data;
    Receiver receive;
};

namespace {

constexpr Size decodedSize { CoverLoader::coverSize.width * 2, CoverLoader::coverSize.height * 2 };

std::optional<Image> decoded(const std::string& bytes)
{
    auto cover = Image::fromBytes(bytes, decodedSize);
    if (cover && (cover->size().width > decodedSize.width || cover->size().height > decodedSize.height))
        cover = cover->imageByScalingProportionallyToSize(decodedSize);
    return cover;
}

Glib::RefPtr<Gdk::Texture> textureOf(const Image& cover)
{
    return Glib::wrap(gdk_texture_new_for_pixbuf(cover.pixbuf()));
}

}

CoverLoader::CoverLoader(RunLoop& runLoop)
    : _runLoop(runLoop)
    , _self(std::make_shared<CoverLoader*>(this))
{
}

CoverLoader::~CoverLoader() = default;

CoverLoader::Ticket CoverLoader::load(const BookInfoPtr& book, Receiver receive)
{
    if (!book->imgData()) {
        receive(defaultCover());
        return {};
    }
    if (const auto cover = _cache.find(*book)) {
        receive(cover);
        return {};
    }
    auto ticket = std::make_shared<Request>(Request { book, *book->imgData(), std::move(receive) });
    // The workers use only the bytes and the ticket; the record belongs to the main thread.
    _workers[_nextWorker++ % _workers.size()].perform(
        [this, self = std::weak_ptr(_self), waiting = std::weak_ptr<Request>(ticket), data = ticket->data] {
            if (waiting.expired())
                return;
            _runLoop.postToMainThread([this, self, waiting, cover = decoded(data.bytes())] {
                if (!self.expired())
                    this->receive(waiting, cover);
            });
        });
    return ticket;
}

void CoverLoader::receive(const std::weak_ptr<Request>& waiting, const std::optional<Image>& cover)
{
    const auto request = waiting.lock();
    if (!request)
        return;
    if (!cover) {
        request->receive(defaultCover());
        return;
    }
    const auto texture = textureOf(*cover);
    _cache.insert(request->book.get(), request->data, texture);
    request->receive(texture);
}

Glib::RefPtr<Gdk::Texture> CoverLoader::defaultCover()
{
    if (std::exchange(_defaultCoverIsLoaded, true))
        return _defaultCover;
    if (const auto bytes = resourceBytes("/org/pagora/Pagora/pagora_default_cover.jpg")) {
        if (const auto cover = decoded(*bytes))
            _defaultCover = textureOf(*cover);
    }
    return _defaultCover;
}

}
