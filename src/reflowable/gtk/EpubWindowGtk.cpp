#include "reflowable/gtk/EpubWindowGtk.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"

#include <glibmm/main.h>
#include <gtkmm/eventcontrollerkey.h>

#include <algorithm>
#include <pangomm/fontfamily.h>
#include <utility>

namespace pagora {

namespace {
// The change of the text size by a key.
constexpr double textSizeStep = 0.1;
}

EpubWindowGtk::EpubWindowGtk(Toplevel& toplevel, ReaderPage page, ReaderLayout layout)
    : MarkedWindowRole(toplevel, std::move(layout), std::move(page), MarkedPage::Search::Yes, textActions(*this))
    , _fontSizeSlider(_parts.widget<Gtk::Scale>("fontSizeSlider"), SliderControl::Continuous::Yes)
    , _colorControl(_parts.widget<Gtk::Widget>("colorControl"), 1)
    , _fontMenu(_parts.widget<Gtk::DropDown>("fontMenu"), PopUpControl::TitlesAreFonts::Yes)
    , _searchField(_parts.widget<Gtk::Widget>("searchField"))
    , _searchPane({ _parts.widget<Gtk::Widget>("searchResults"), _parts.widget<Gtk::Widget>("tocClip"),
                      _parts.widget<Gtk::ListView>("resultList"), _parts.widget<Gtk::Label>("resultCount"),
                      _parts.widget<Gtk::CheckButton>("wholeWords"), _searchField },
          _parts.queue)
    , _displayOptions(_parts.widget<Gtk::Popover>("displayOptions"), _parts.widget<Gtk::Button>("displayOptionsButton"))
    , _note(_parts.widget<Gtk::Overlay>("pagePlace"), [this] { _parts.send(&ReaderWindowActions::goToNote); })
{
    _parts.setExtraCommands([this](ReaderCommand command) { return perform(command); });
    auto& panel = _parts.widget<Gtk::Popover>("displayOptions");
    leaveUnnamed(panel);
    correctAccessibleNames(panel);
    setAccessibleName(panel, _("Display options"));
    _parts.watchKeys(panel);
    _searchField.setActions([this] { _parts.send(&ReaderWindowActions::searchContent, _searchField.stringValue()); },
        [this] {
            if (!endSearch())
                _parts.focusPage();
        });
    _connections = {
        _parts.widget<Gtk::Button>("displayOptionsButton").signal_clicked().connect([this] {
            _marked.endSelection();
            _parts.send(&ReaderWindowActions::displayOptions);
        }),
        _parts.widget<Gtk::Button>("columnsButton").signal_clicked().connect([this] {
            _marked.endSelection();
            _parts.send(&ReaderWindowActions::changeWidth);
        }),
        panel.signal_closed().connect([this] { _parts.focusPage(); }),
        // Full screen moves the title bar. An open popover would keep the keys while hidden.
        _parts.widget<Gtk::Button>("displayOptionsButton").signal_unmap().connect([&panel] { panel.popdown(); }),
    };
    connectSearch();
    _parts.watchKeys(_note.popover());
    _connections.push_back(_note.popover().signal_closed().connect([this] { _parts.focusPage(); }));
}

void EpubWindowGtk::showNote(const std::string& text, const PointedLink& reference)
{
    const auto place = _marked.placeOf(reference.place);
    _note.show(text,
        { static_cast<int>(place.x), static_cast<int>(place.y), static_cast<int>(place.width),
            static_cast<int>(place.height) },
        reference.input);
}

std::vector<SelectionBar::Action> EpubWindowGtk::textActions(EpubWindowGtk& window)
{
    const auto sends = [&window](std::function<void()> ReaderWindowActions::*action) {
        return [&window, action] { window._parts.send(action); };
    };
    return {
        { _("Copy"), sends(&ReaderWindowActions::copySelection) },
        { _("Find in Book"), sends(&ReaderWindowActions::findSelection) },
        { _("Look Up"), sends(&ReaderWindowActions::lookUpSelection) },
    };
}

void EpubWindowGtk::searchFor(const std::string& text)
{
    showSearchField();
    _parts.queue.post([this, text] { _searchField.setStringValue(text); });
}

// Shows the search field, which is in the contents pane.
void EpubWindowGtk::showSearchField()
{
    if (_parts.mainSplitView.isSubviewHidden(0))
        _parts.send(&ReaderWindowActions::toggleLeftView);
}

void EpubWindowGtk::connectSearch()
{
    _searchField.setChanged([this] { search(); });
    _searchPane.setChosen([this](std::size_t index) { _parts.send(&ReaderWindowActions::goToResult, index); });
    _connections.push_back(
        _parts.widget<Gtk::CheckButton>("wholeWords").signal_toggled().connect([this] { search(); }));
    _connections.push_back(_parts.widget<Gtk::Button>("nextResult").signal_clicked().connect([this] {
        _parts.send(&ReaderWindowActions::goToNextResult);
    }));
    _connections.push_back(_parts.widget<Gtk::Button>("previousResult").signal_clicked().connect([this] {
        _parts.send(&ReaderWindowActions::goToPreviousResult);
    }));
    // The key Down moves from the field to the results.
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(keys->signal_key_pressed().connect(
        [this](guint keyval, guint, Gdk::ModifierType) {
            if (keyval != GDK_KEY_Down || !_searchPane.isShown())
                return false;
            _searchPane.focusResults();
            return true;
        },
        false));
    _parts.widget<Gtk::Widget>("searchField").add_controller(keys);
}

void EpubWindowGtk::search()
{
    const auto words = _parts.widget<Gtk::CheckButton>("wholeWords").get_active() ? WholeWords::Yes : WholeWords::No;
    _parts.send(&ReaderWindowActions::search, _searchField.stringValue(), words);
}

// Returns whether a search was active.
bool EpubWindowGtk::endSearch()
{
    if (!_searchPane.isShown() && _searchField.stringValue().empty())
        return false;
    _parts.send(&ReaderWindowActions::endSearch);
    _parts.focusPage();
    return true;
}

EpubWindowGtk::~EpubWindowGtk()
{
    for (auto& connection : _connections)
        connection.disconnect();
}

std::vector<std::string> EpubWindowGtk::availableFontFamilies() const
{
    // Pairs of sort key and family.
    std::vector<std::pair<std::string, std::string>> families;
    for (const auto& family : _parts.widget<Gtk::Widget>("stage").get_pango_context()->list_families()) {
        const auto name = family->get_name();
        families.emplace_back(name.casefold_collate_key(), name);
    }
    // The font map is not sorted.
    std::sort(families.begin(), families.end());
    std::vector<std::string> names;
    names.reserve(families.size());
    for (auto& [key, name] : families)
        names.push_back(std::move(name));
    return names;
}

void EpubWindowGtk::setBookLanguage(const std::string& language)
{
    if (language.empty())
        return;
    // The fonts are checked when the main loop is idle, because the page is loaded first.
    _connections.push_back(Glib::signal_idle().connect([this, language] {
        if (isMissingFontUntold(language)) {
            _missingFontNote = std::make_unique<MissingFontNote>(language, [this] { _parts.focusPage(); });
            _parts.widget<Gtk::Box>("pagePane").append(*_missingFontNote);
        }
        return false;
    }));
}

void EpubWindowGtk::setColumnCount(std::int32_t columns)
{
    const char* const text = columns <= 1 ? _("One column") : columns == 2 ? _("Two columns") : _("Three columns");
    _parts.widget<Gtk::Label>("columnsLabel").set_text(text);
    gtk_accessible_update_property(
        GTK_ACCESSIBLE(_parts.widget<Gtk::Button>("columnsButton").gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, text, -1);
}

bool EpubWindowGtk::perform(ReaderCommand command)
{
    switch (command) {
    case ReaderCommand::Search:
        showSearchField();
        _parts.queue.post([this] { _searchField.makeFirstResponder(); });
        return true;
    case ReaderCommand::NextResult:
    case ReaderCommand::PreviousResult:
        if (_searchField.stringValue().empty())
            return perform(ReaderCommand::Search);
        _parts.send(command == ReaderCommand::NextResult ? &ReaderWindowActions::goToNextResult
                                                         : &ReaderWindowActions::goToPreviousResult);
        return true;
    case ReaderCommand::LeaveFullScreen:
        return _marked.endSelection() || endSearch();
    case ReaderCommand::ShowMarks:
        // The results are shown in the place of the list.
        if (_searchPane.isShown())
            _parts.send(&ReaderWindowActions::endSearch);
        return _marked.perform(command);
    case ReaderCommand::LargerText:
    case ReaderCommand::SmallerText:
    case ReaderCommand::DefaultText:
        _marked.endSelection();
        _parts.queue.post([this, command] { moveTextSize(command); });
        return true;
    default:
        return _marked.perform(command);
    }
}

void EpubWindowGtk::moveTextSize(ReaderCommand command)
{
    const double now = _parts.widget<Gtk::Scale>("fontSizeSlider").get_value();
    if (command == ReaderCommand::LargerText)
        _fontSizeSlider.moveTo(now + textSizeStep);
    else if (command == ReaderCommand::SmallerText)
        _fontSizeSlider.moveTo(now - textSizeStep);
    else
        _fontSizeSlider.moveTo((_fontSizeSlider.minValue() + _fontSizeSlider.maxValue()) / 2);
}

}
