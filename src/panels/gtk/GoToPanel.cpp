#include "panels/gtk/GoToPanel.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"

#include <gtkmm/adjustment.h>
#include <gtkmm/eventcontrollerkey.h>

#include <algorithm>

namespace pagora {

namespace {

constexpr int width = 6;

void setShown(bool isShown, std::initializer_list<Gtk::Widget*> row)
{
    for (auto* const part : row)
        part->set_visible(isShown);
}

}

GoToPanel::GoToPanel(Gtk::Widget& anchor, std::function<Place()> place, Actions actions)
    : _anchor(anchor)
    , _place(std::move(place))
    , _actions(std::move(actions))
    , _percentageName(_("Part of the book"))
    , _percentageUnit("%")
    , _printedName(_("Page in print"))
{
    addSpin(
        0, _percentageName, _percentage, _percentageUnit, [this] { _actions.goToPercentage(_percentage.get_value()); });
    addSpin(1, _pageName, _page, _pageUnit, [this] { _actions.goToPage(_page.get_value_as_int()); });
    addRow(2, _printedName, _printed, _printedUnit);
    _printed.set_width_chars(width);
    _printed.set_max_width_chars(width);
    _printed.signal_activate().connect([this] { goToPrintedPage(); });
    _printed.signal_changed().connect([this] { _printed.remove_css_class("error"); });
    _grid.set_row_spacing(8);
    _grid.set_column_spacing(10);
    _popover.add_css_class("go-to");
    _popover.set_child(_grid);
    _popover.set_position(Gtk::PositionType::TOP);
    _popover.set_parent(_anchor);
    setAccessibleName(_popover, _("Go to"));
}

GoToPanel::~GoToPanel()
{
    _popover.unparent();
}

void GoToPanel::addRow(int row, Gtk::Label& name, Gtk::Widget& field, Gtk::Label& unit)
{
    name.set_xalign(1);
    unit.set_xalign(0);
    _grid.attach(name, 0, row);
    _grid.attach(field, 1, row);
    _grid.attach(unit, 2, row);
    name.set_mnemonic_widget(field);
}

void GoToPanel::addSpin(int row, Gtk::Label& name, Gtk::SpinButton& field, Gtk::Label& unit, std::function<void()> go)
{
    addRow(row, name, field, unit);
    field.set_width_chars(width);
    field.set_numeric(true);
    field.set_snap_to_ticks(true);
    // The key is captured before the field, which would only adopt the number.
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this, &field, go = std::move(go)](guint keyval, guint, Gdk::ModifierType) {
            if (keyval != GDK_KEY_Return && keyval != GDK_KEY_KP_Enter && keyval != GDK_KEY_ISO_Enter)
                return false;
            field.update();
            close();
            go();
            return true;
        },
        false);
    field.add_controller(keys);
}

void GoToPanel::setPrintedPages(std::vector<std::string> labels)
{
    _printedPages = std::move(labels);
    const auto range = _printedPages.empty() ? std::string() : _printedPages.front() + " – " + _printedPages.back();
    _printedUnit.set_text(displayText(range, 60));
}

void GoToPanel::goToPrintedPage()
{
    const auto wanted = _printed.get_text().casefold();
    const auto found = std::find_if(_printedPages.begin(), _printedPages.end(),
        [&wanted](const std::string& label) { return displayText(label).casefold() == wanted; });
    if (found == _printedPages.end())
        return _printed.add_css_class("error");
    close();
    _actions.goToPrintedPage(static_cast<std::size_t>(found - _printedPages.begin()));
}

void GoToPanel::open()
{
    const auto place = _place();
    setShown(place.percentage.has_value(), { &_percentageName, &_percentage, &_percentageUnit });
    setShown(!_printedPages.empty(), { &_printedName, &_printed, &_printedUnit });
    _percentage.set_adjustment(Gtk::Adjustment::create(place.percentage.value_or(0), 0, 100, 1, 10));
    _page.set_adjustment(Gtk::Adjustment::create(place.page, 1, std::max(place.pages, 1), 1, 10));
    _pageName.set_text(place.isOfBook ? _("Page") : _("Page of the chapter"));
    _pageUnit.set_text(formatted(_("of %d"), place.pages));
    _printed.set_text("");
    _popover.set_pointing_to({ _anchor.get_width() / 2, _anchor.get_height() - 1, 1, 1 });
    _popover.popup();
    if (place.percentage)
        _percentage.grab_focus();
    else
        _page.grab_focus();
}

}
