#pragma once

#include "base/GObjectPtr.hpp"

#include <gtk/gtk.h>

namespace pagora {

// Drawn in place of a page that is not ready: a picture of the previous page, a given picture, or nothing, so that the
// background is visible. Keeps the last drawing of the page. Main thread only.
class PageCover {
public:
    PageCover() = default;
    ~PageCover();
    PageCover(const PageCover&) = delete;
    PageCover& operator=(const PageCover&) = delete;

    // Covers `page` with its picture or with nothing. An existing cover stays.
    enum class Show : bool { Nothing, LastPicture };
    void put(GtkWidget* page, Show show);
    void remove();
    bool isOn() const { return _isOn; }
    // Draws this picture in place of the page, as long as the page has exactly its size in device pixels; `scale` is
    // the number of device pixels per pixel of the toolkit. Does nothing if the page is not covered.
    void give(GObjectPtr<GdkTexture> picture, int scale);
    void withdraw() { _given = {}; }
    // Returns whether a given picture is drawn.
    bool drawsGiven(GtkWidget* page) const;

    // Returns a picture of the page as it would be drawn now; null if it is not on a screen, or is not drawn pixel by
    // pixel.
    static GObjectPtr<GdkTexture> pictureNow(GtkWidget* frame, GtkWidget* page);

    // Draws the cover, or the page if it is not covered.
    void draw(GtkWidget* frame, GtkWidget* page, GtkSnapshot* snapshot);

private:
    void forgetDrawing();

    bool _isOn = false;
    GskRenderNode* _drawing = nullptr;
    // A copy, because the engine draws the next page into the same memory.
    GObjectPtr<GdkTexture> _picture;
    graphene_rect_t _place {};
    GObjectPtr<GdkTexture> _given;
    int _givenScale = 1;
};

}
