#pragma once

#include "covers/gtk/CoverCache.hpp"
#include "running/RunLoop.hpp"
#include "running/Worker.hpp"

#include <array>
#include <functional>
#include <memory>

namespace pagora {

// Decodes or draws covers in the background on request and caches those shown last. Main thread only.
class CoverLoader {
public:
    // In points. Covers are decoded for screens with twice as many pixels.
    static constexpr Size coverSize { 106, 156 };
    static constexpr std::size_t cacheCapacity = 400;

    // A pending request. Destroying it cancels it.
    struct Request;
    using Ticket = std::shared_ptr<Request>;
    using Receiver = std::function<void(const Glib::RefPtr<Gdk::Texture>&)>;

    explicit CoverLoader(RunLoop& runLoop);
    ~CoverLoader();

    // Passes the book's cover to `receive`, immediately if it is cached. If the cover is missing, cannot be decoded or
    // is the default cover, a cover is drawn with `pixelsInPoint` pixels per point.
    [[nodiscard]] Ticket load(const BookInfoPtr& book, int pixelsInPoint, Receiver receive);

    const CoverCache& cache() const { return _cache; }

private:
    void receive(const std::weak_ptr<Request>& waiting, const Image& cover);

    RunLoop& _runLoop;
    CoverCache _cache { cacheCapacity };
    // Low urgency, so that frames are drawn first.
    std::array<Worker, 2> _workers { Worker(Worker::Urgency::Low), Worker(Worker::Urgency::Low) };
    std::size_t _nextWorker = 0;
    // Expires with the loader. Used by covers that arrive later.
    std::shared_ptr<CoverLoader*> _self;
};

}
