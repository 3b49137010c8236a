#pragma once

#include "base/GObjectPtr.hpp"

#include <gtk/gtk.h>

namespace pagora {

// What is drawn in the place of a page that is not ready to be seen: the picture of the page before it, or nothing, so
// that what lies behind shows. It knows the page as it was drawn last. Main thread.
class PageCover {
public:
    PageCover() = default;
    ~PageCover();
    PageCover(const PageCover&) = delete;
    PageCover& operator=(const PageCover&) = delete;

    // Covers `page` with the picture of it, or with nothing. One that is covered already keeps its cover.
    enum class Show : bool { Nothing, LastPicture };
    void put(GtkWidget* page, Show show);
    void remove();
    bool isOn() const { return _isOn; }

    // Draws the cover, or the page where there is none.
    void draw(GtkWidget* frame, GtkWidget* page, GtkSnapshot* snapshot);

private:
    void forgetDrawing();

    bool _isOn = false;
    GskRenderNode* _drawing = nullptr;
    // A copy: the engine draws the next page into the memory of the last ones.
    GObjectPtr<GdkTexture> _picture;
    graphene_rect_t _place {};
};

}
