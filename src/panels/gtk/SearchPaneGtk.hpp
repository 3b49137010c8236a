#pragma once

#include "contents/gtk/ActionQueue.hpp"
#include "panels/SearchPane.hpp"

#include <gtkmm/checkbutton.h>
#include <gtkmm/label.h>
#include <gtkmm/listitem.h>
#include <gtkmm/listview.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/singleselection.h>
#include <gtkmm/stringlist.h>

#include <functional>
#include <vector>

namespace pagora {

class SearchFieldControl;
class SearchResultRow;

// The results of a search in the widgets of a layout, below the search field. Main thread only.
class SearchPaneGtk : public SearchPane {
public:
    // The widgets of the layout and the queue through which results are chosen. All must outlive this object.
    struct Parts {
        Gtk::Widget& results;
        Gtk::Widget& contents;
        Gtk::ListView& list;
        Gtk::Label& count;
        Gtk::CheckButton& wholeWords;
        SearchFieldControl& field;
    };
    SearchPaneGtk(const Parts& parts, ActionQueue& queue);
    ~SearchPaneGtk() override;

    void setResultsShown(bool isShown) override;
    void removeAllResults() override;
    void addChapter(const std::string& name) override;
    void addResults(const std::vector<FoundText>& results) override;
    void setCount(std::size_t count, bool isOver) override;
    void selectResult(std::optional<std::size_t> index) override;
    void emptyField() override;

    bool isShown() const { return _parts.results.get_visible(); }
    // Sets the callback for the index of a chosen result.
    void setChosen(std::function<void(std::size_t index)> chosen) { _chosen = std::move(chosen); }
    void focusResults();

private:
    // The content of a row: the name of a chapter, or the index of a result.
    struct Line {
        std::optional<std::size_t> result;
        std::string chapter;
    };

    void connectRows();
    // Adds rows for at most `count` more lines.
    void addRows(std::size_t count);
    void bind(const Glib::RefPtr<Gtk::ListItem>& item);
    void choose(guint position);

    Parts _parts;
    ActionQueue& _queue;
    std::function<void(std::size_t)> _chosen;
    std::vector<Line> _lines;
    std::vector<FoundText> _results;
    // The row index of each result.
    std::vector<guint> _rowOfResult;
    // Has one row for each line that was added so far.
    Glib::RefPtr<Gtk::StringList> _model;
    // Adds the remaining rows when idle.
    sigc::connection _rest;
    Glib::RefPtr<Gtk::SingleSelection> _selection;
    std::vector<sigc::connection> _connections;
};

}
