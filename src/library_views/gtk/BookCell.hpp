#pragma once

#include "covers/gtk/CoverLoader.hpp"
#include "covers/gtk/CoverView.hpp"

#include <gtkmm/label.h>

#include <array>
#include <optional>

namespace pagora {

// Returns the accessible name of a book: title, author and the fraction that was read.
Glib::ustring spokenBook(const BookInfo& book);

// Shows one text of a book. A placeholder or URN is dimmed.
void showText(Gtk::Label& label, const std::optional<std::string>& text);

// Shows the text as a tooltip if the label truncates it.
void showWholeTextOnHover(Gtk::Label& label);

// A cover that is loaded while the cell has a book. Main thread only.
class CoverCell : public CoverView {
public:
    CoverCell(CoverLoader& loader, Size box);
    // Null for no book.
    void setBook(const BookInfoPtr& book);
    // Updates the line that shows how much was read.
    void showProgress();
    static Glib::ustring name();
    static Glib::ustring spokenName(const BookInfo& book);

private:
    CoverLoader& _loader;
    CoverLoader::Ticket _ticket;
    BookInfoPtr _book;
};

// An item of the grid: a cover with title and author below it. It is reused for different books. Its size depends only
// on the fonts, so a new book costs one layout of each text. Main thread only.
class BookCell : public Gtk::Widget {
public:
    // Returns the width of a cell without its margins, in points. It grows less than the desktop's text scale.
    static int width();

    explicit BookCell(CoverLoader& loader);
    ~BookCell() override;
    void setBook(const BookInfoPtr& book);

    const CoverView& cover() const { return _cover; }
    Glib::ustring title() const { return _title.get_text(); }
    Glib::ustring author() const { return _author.get_text(); }
    void showProgress() { _cover.showProgress(); }
    static Glib::ustring spokenName(const BookInfo& book) { return spokenBook(book); }

protected:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override { return Gtk::SizeRequestMode::CONSTANT_SIZE; }
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural, int& minimumBaseline,
        int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    // The widgets from top to bottom.
    std::array<Gtk::Widget*, 3> parts();
    void letGoOfParts();

    CoverCell _cover;
    Gtk::Label _title;
    Gtk::Label _author;
    sigc::connection _letGo;
};

}
