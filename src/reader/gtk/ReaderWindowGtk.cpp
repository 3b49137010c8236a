#include "reader/gtk/ReaderWindowGtk.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"

#include <gtkmm/dropdown.h>
#include <gtkmm/editable.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/listview.h>
#include <gtkmm/overlay.h>
#include <gtkmm/popover.h>
#include <gtkmm/range.h>
#include <gtkmm/scale.h>
#include <gtkmm/textview.h>
#include <gtkmm/togglebutton.h>

#include <initializer_list>

namespace pagora {

namespace {

// A window narrower than this, in points, opens without the contents pane.
constexpr int roomForContents = 1000;

// In right-to-left interfaces the contents stay left of the page, and the location slider follows the page direction.
void keepSides(Gtk::Scale& slider, Gtk::Label& label, Gtk::ToggleButton& contents)
{
    for (auto* const part :
        std::initializer_list<Gtk::Widget*> { slider.get_parent(), &slider, &label, contents.get_child() })
        part->set_direction(Gtk::TextDirection::LTR);
}

Gtk::Box& locationBar(Gtk::Scale& slider)
{
    return dynamic_cast<Gtk::Box&>(*slider.get_parent());
}

bool isWithinClass(const Gtk::Widget* widget, const char* name)
{
    while (widget && !widget->has_css_class(name))
        widget = widget->get_parent();
    return widget;
}

template <typename Kind>
bool isWithin(const Gtk::Widget* widget)
{
    for (; widget; widget = widget->get_parent()) {
        if (dynamic_cast<const Kind*>(widget))
            return true;
    }
    return false;
}

}

ReaderWindowGtk::ReaderWindowGtk(Toplevel& toplevel, ReaderLayout layout, ReaderPage readerPage)
    : _layout(std::move(layout))
    , page(std::move(readerPage))
    , window(toplevel, _layout.content())
    , header(_layout.builder())
    , mainSplitView(widget<Gtk::Box>("mainSplitView"))
    , tocView(widget<Gtk::ListView>("tocView"), widget<Gtk::ScrolledWindow>("tocClip"), queue)
    , goLeftButton(widget<Gtk::Button>("goLeftButton"), queue)
    , goRightButton(widget<Gtk::Button>("goRightButton"), queue)
    , bgView(widget<Gtk::Widget>("bgView"))
    , loadingSign(widget<Gtk::Widget>("loadingSign"))
    , locLabel(widget<Gtk::Label>("locLabel"))
    , locSlider(widget<Gtk::Scale>("locSlider"), SliderControl::Continuous::No)
    , footer(EdgeBar::Edge::Bottom, locationBar(widget<Gtk::Scale>("locSlider")), widget<Gtk::Box>("pagePane"),
          widget<Gtk::Overlay>("pagePlace"))
    , surroundings(
          { widget<Gtk::Widget>("stage"), locationBar(widget<Gtk::Scale>("locSlider")), widget<Gtk::Label>("locLabel"),
              widget<Gtk::Box>("contentsPane"), widget<Gtk::Widget>("tocClip"), widget<Gtk::Overlay>("pagePlace") })
    , goToPanel(
          widget<Gtk::Overlay>("pagePlace"), [this] { return place(); }, goToActions())
{
    widget<Gtk::Overlay>("pagePlace").set_child(*page.widget);
    if (page.setFlickHandler)
        page.setFlickHandler([this](double deltaX) { send(&ReaderWindowActions::scrollWheelBegan, deltaX); });
    if (page.setBackground)
        bgView.setFillHandler([this](const Color& color) {
            page.setBackground(color);
            surroundings.barColors().setTheme(color);
        });
    if (page.setGroundHandler)
        page.setGroundHandler([this](const auto& ground) { surroundings.barColors().setGround(ground); });
    showPressedPictures();
    if (page.setNamer) {
        // The page has the focus when the window is shown, before it is loaded.
        const auto name = [this] {
            page.setNamer([this](const std::string& title) {
                _documentTitle = title;
                surroundings.setChapter(chapterName());
                return nameOfPage();
            });
        };
        window.setTitleAction(name);
        name();
    }
    tocView.setLinksChanged([this] {
        surroundings.setHasContents(tocView.hasLinks());
        surroundings.setChapter(chapterName());
        if (page.nameMayHaveChanged)
            page.nameMayHaveChanged();
    });
    keepSides(
        widget<Gtk::Scale>("locSlider"), widget<Gtk::Label>("locLabel"), widget<Gtk::ToggleButton>("contentsButton"));
    leaveUnnamed(_layout.content());
    tellOfChanges(_layout.content());
    connectHeader();
    connectWindow();
    const auto click = Gtk::GestureClick::create();
    click->signal_released().connect([this](int, double, double) { queue.post([this] { goToPanel.open(); }); });
    auto& label = widget<Gtk::Label>("locLabel");
    label.add_controller(click);
    label.set_cursor("pointer");
    label.set_tooltip_text(_("Go to a page or a part of the book (Ctrl+G)"));
    watchKeys(goToPanel.popover());
    goToPanel.popover().signal_closed().connect([this] { focusPage(); });
    if (!page.isConfined)
        addConfinementNote();
}

void ReaderWindowGtk::showPressedPictures()
{
    if (!page.setPictureHandler || !page.runLoop)
        return;
    _largePicture = std::make_unique<LargePicture>(widget<Gtk::Overlay>("stage"), *page.runLoop);
    _largePicture->setCloseHandler([this] { focusPage(); });
    page.setPictureHandler([this](const std::string& file) {
        _largePicture->show(
            file, _("Picture"), [this] { static_cast<void>(page.webView->evaluateScript("pagoraShowPictureHere()")); });
    });
}

GoToPanel::Actions ReaderWindowGtk::goToActions()
{
    return { [this](double percentage) { send(&ReaderWindowActions::goToPercentage, percentage); },
        [this](std::int64_t number) { send(&ReaderWindowActions::goToPage, number); },
        [this](std::size_t index) { send(&ReaderWindowActions::goToPrintedPage, index); } };
}

// In a fixed-layout book, each step of the slider is a page.
GoToPanel::Place ReaderWindowGtk::place()
{
    const double value = locSlider.floatValue();
    const double end = locSlider.maxValue();
    if (const auto chapter = surroundings.pageOfChapter())
        return { end > 0 ? static_cast<int>(100 * value / end) : 0, static_cast<int>(chapter->first),
            static_cast<int>(chapter->second), false };
    return { std::nullopt, static_cast<int>(value), static_cast<int>(end), true };
}

void ReaderWindowGtk::addConfinementNote()
{
    _confinementNote = std::make_unique<ConfinementNote>([this] { focusPage(); });
    widget<Gtk::Box>("pagePane").append(*_confinementNote);
    watchKeys(_confinementNote->explanation());
}

ReaderWindowGtk::~ReaderWindowGtk()
{
    for (auto& connection : _connections)
        connection.disconnect();
    if (page.setFlickHandler)
        page.setFlickHandler({});
    if (page.setNamer)
        page.setNamer({});
    if (page.setGroundHandler)
        page.setGroundHandler({});
    if (page.setPictureHandler)
        page.setPictureHandler({});
    tocView.setLinksChanged({});
    // This only detaches the page, which the page view destroys. The header bar's widgets destroy their popovers.
    widget<Gtk::Overlay>("pagePlace").unset_child();
}

void ReaderWindowGtk::connectHeader()
{
    header.setLibraryAction([this] { send(&ReaderWindowActions::closeEPUB); });
    header.setBackAction([this] { send(&ReaderWindowActions::goBack); });
    header.setFullScreenAction([this] { send(&ReaderWindowActions::toggleFullScreen); });
    header.setContentsAction([this] {
        if (header.isContentsShown() == !mainSplitView.isSubviewHidden(0))
            return;
        send(&ReaderWindowActions::toggleLeftView);
        // Resets the button if the action did not toggle the pane.
        queue.post([this] { header.setContentsShown(!mainSplitView.isSubviewHidden(0)); });
    });
    mainSplitView.setHiddenChanged([this] { header.setContentsShown(!mainSplitView.isSubviewHidden(0)); });
}

void ReaderWindowGtk::connectWindow()
{
    window.addController(makeKeys());
    window.addController(makeMouseButtons());
    window.setCloseAction([this] {
        send(&ReaderWindowActions::closeEPUB);
        return false;
    });
    auto& content = _layout.content();
    _connections.push_back(content.signal_realize().connect(
        [this] { mainSplitView.setSubviewHidden(0, window.frame().width < roomForContents); }));
    _connections.push_back(content.signal_map().connect([this] { focusPage(); }));
    // Clicking the slider focuses it. The focus returns to the page, so that keys turn pages.
    locSlider.setReleaseHandler([this] { focusPage(); });
    window.setStateAction([this] {
        const bool isFullScreen = window.isFront() && window.window().is_fullscreen();
        header.setFullScreen(isFullScreen);
        footer.setFullScreen(isFullScreen);
        _barsAreCalled = _barsAreCalled && isFullScreen;
    });
    window.setFullScreenAction([this](bool isFullScreen) { fullScreenDidChange(isFullScreen); });
}

std::string ReaderWindowGtk::bookTitle() const
{
    constexpr std::string_view program = "Pagora - ";
    std::string title = window.title();
    if (title.starts_with(program))
        title.erase(0, program.size());
    return title;
}

std::string ReaderWindowGtk::chapterName() const
{
    const auto entry = tocView.activeTitle();
    const auto& name = entry.empty() ? _documentTitle : entry;
    return name == bookTitle() ? std::string() : name;
}

// The name of the book, followed by that of the chapter.
std::string ReaderWindowGtk::nameOfPage() const
{
    const auto book = bookTitle();
    const auto chapter = chapterName();
    return chapter.empty() ? book : formatted(_("%s, %s"), book.c_str(), chapter.c_str());
}

void ReaderWindowGtk::focusPage()
{
    queue.post([this] { page.webView->makeFirstResponder(); });
}

void ReaderWindowGtk::fullScreenDidChange(bool isFullScreen)
{
    if (isFullScreen)
        send(&ReaderWindowActions::windowDidEnterFullScreen);
    else
        send(&ReaderWindowActions::windowDidExitFullScreen);
}

void ReaderWindowGtk::watchKeys(Gtk::Widget& panel)
{
    panel.add_controller(makeKeys());
}

Glib::RefPtr<Gtk::EventController> ReaderWindowGtk::makeKeys()
{
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(keys->signal_key_pressed().connect(
        [this](guint keyval, guint, Gdk::ModifierType state) {
            const bool rightToLeft = page.runsRightToLeft && page.runsRightToLeft();
            const auto command = readerCommand(
                keyval, state, focusKind(), rightToLeft ? PageDirection::RightToLeft : PageDirection::LeftToRight);
            return command && perform(*command);
        },
        false));
    return keys;
}

// Handles the back and forward buttons of a mouse.
Glib::RefPtr<Gtk::EventController> ReaderWindowGtk::makeMouseButtons()
{
    constexpr guint backButton = 8;
    constexpr guint onButton = 9;
    const auto click = Gtk::GestureClick::create();
    click->set_button(0);
    click->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    _connections.push_back(click->signal_pressed().connect([this, gesture = click.get()](int, double, double) {
        const auto button = gesture->get_current_button();
        if (button != backButton && button != onButton) {
            gesture->set_state(Gtk::EventSequenceState::DENIED);
            return;
        }
        gesture->set_state(Gtk::EventSequenceState::CLAIMED);
        send(button == backButton ? &ReaderWindowActions::goBack : &ReaderWindowActions::goForward);
    }));
    return click;
}

ReaderFocus ReaderWindowGtk::focusKind()
{
    const auto* const focus = window.focus();
    if (!focus || focus == page.widget || focus->is_ancestor(*page.widget))
        return focus && page.takesKeys && page.takesKeys() ? ReaderFocus::Text : ReaderFocus::Page;
    if (isWithin<Gtk::Editable>(focus) || dynamic_cast<const Gtk::TextView*>(focus))
        return ReaderFocus::Text;
    if (isWithin<Gtk::Popover>(focus) || isWithin<Gtk::Range>(focus) || isWithin<Gtk::DropDown>(focus)
        || focus->has_css_class("split-divider") || isWithinClass(focus, "selection-bar"))
        return ReaderFocus::Control;
    return isWithin<Gtk::ListView>(focus) ? ReaderFocus::Contents : ReaderFocus::Button;
}

bool ReaderWindowGtk::perform(ReaderCommand command)
{
    // Any command closes an enlarged picture. The Escape key then does nothing else.
    if (_largePicture && _largePicture->close() && command == ReaderCommand::LeaveFullScreen)
        return true;
    switch (command) {
    case ReaderCommand::PreviousPage:
        send(&ReaderWindowActions::changePage, 0);
        return true;
    case ReaderCommand::NextPage:
        send(&ReaderWindowActions::changePage, 1);
        return true;
    case ReaderCommand::FirstPage:
        send(&ReaderWindowActions::goToFirstPage);
        return true;
    case ReaderCommand::LastPage:
        send(&ReaderWindowActions::goToLastPage);
        return true;
    case ReaderCommand::Close:
        send(&ReaderWindowActions::closeEPUB);
        return true;
    case ReaderCommand::ToggleContents:
        send(&ReaderWindowActions::toggleLeftView);
        return true;
    case ReaderCommand::ToggleFullScreen:
        send(&ReaderWindowActions::toggleFullScreen);
        return true;
    case ReaderCommand::CallBars:
        if (!window.isFullScreen())
            return false;
        _barsAreCalled = !_barsAreCalled;
        header.setCalled(_barsAreCalled);
        footer.setCalled(_barsAreCalled);
        return true;
    case ReaderCommand::LeaveFullScreen:
        // An open popover, an enlarged picture and a search get the Escape key first.
        if (isWithin<Gtk::Popover>(window.focus()) || (page.takesEscape && page.takesEscape()))
            return false;
        if (_extraCommands && _extraCommands(command))
            return true;
        if (!window.isFullScreen())
            return false;
        send(&ReaderWindowActions::toggleFullScreen);
        return true;
    case ReaderCommand::GoTo:
        queue.post([this] { goToPanel.open(); });
        return true;
    case ReaderCommand::GoBack:
        send(&ReaderWindowActions::goBack);
        return true;
    case ReaderCommand::GoForward:
        send(&ReaderWindowActions::goForward);
        return true;
    default:
        return _extraCommands && _extraCommands(command);
    }
}

}
