#include "notebook/gtk/MarkEditor.hpp"

#include "base/Translation.hpp"
#include "desktop/gtk/AccessibleNames.hpp"
#include "desktop/gtk/DisplayText.hpp"
#include "notebook/gtk/MarkRow.hpp"

#include <gdkmm/clipboard.h>
#include <glibmm/main.h>
#include <gtk/gtk.h>

namespace pagora {

namespace {

// In pixels.
constexpr int editorWidth = 280;
constexpr int noteHeight = 70;
constexpr int maxNoteHeight = 200;
// The duration of a notice in milliseconds.
constexpr unsigned noticeTime = 4'000;

constexpr const char* colors[] = { "yellow", "orange", "pink", "purple", "blue", "green" };

}

MarkEditor::MarkEditor(Gtk::Widget& page, Actions actions)
    : _page(page)
    , _actions(std::move(actions))
    , _box(Gtk::Orientation::VERTICAL, 10)
    , _copy(_("Copy"))
    , _remove(_("Remove"))
{
    addColors();
    _note.set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
    _note.set_accepts_tab(false);
    setAccessibleName(_note, _("Note"));
    _scroll.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    _scroll.set_propagate_natural_height(true);
    _scroll.set_min_content_height(noteHeight);
    _scroll.set_max_content_height(maxNoteHeight);
    _scroll.set_size_request(editorWidth, -1);
    _scroll.set_child(_note);
    _scroll.set_has_frame(true);
    _buttons.set_spacing(6);
    _buttons.set_halign(Gtk::Align::END);
    _buttons.append(_copy);
    _buttons.append(_remove);
    for (Gtk::Widget* const part : std::initializer_list<Gtk::Widget*> { &_colors, &_scroll, &_buttons })
        _box.append(*part);
    _copy.signal_clicked().connect([this] { copy(); });
    _remove.signal_clicked().connect([this] {
        const auto mark = _mark.number;
        // Removing the mark discards a typed note.
        _note.get_buffer()->set_text(_mark.note);
        _popover.popdown();
        _actions.remove(mark);
    });
    _popover.add_css_class("mark-editor");
    _popover.set_child(_box);
    _popover.set_position(Gtk::PositionType::TOP);
    _popover.set_parent(_page);
    _popover.signal_closed().connect([this] { takeNote(); });
    setAccessibleName(_popover, _("Mark"));
}

MarkEditor::~MarkEditor()
{
    takeNote();
    _popover.unparent();
}

void MarkEditor::addColors()
{
    _colors.set_spacing(6);
    _colors.set_halign(Gtk::Align::CENTER);
    for (const char* const color : colors) {
        auto* const button = Gtk::make_managed<Gtk::ToggleButton>();
        button->add_css_class("mark-color");
        button->add_css_class(std::string("mark-") + color);
        button->set_tooltip_text(colorTitle(color));
        setAccessibleName(*button, colorTitle(color));
        if (!_colorButtons.empty())
            button->set_group(*_colorButtons.front().second);
        button->signal_toggled().connect([this, button, color] {
            if (!_isFilling && button->get_active())
                _actions.setColor(_mark.number, color);
        });
        _colorButtons.emplace_back(color, button);
        _colors.append(*button);
    }
}

void MarkEditor::show(const EditedMark& mark, const Gdk::Rectangle& place)
{
    _popover.popdown();
    _mark = mark;
    _isFilling = true;
    for (const auto& [color, button] : _colorButtons)
        button->set_active(color == mark.color);
    _isFilling = false;
    _note.get_buffer()->set_text(displayText(mark.note));
    _popover.set_pointing_to(place);
    _popover.popup();
    if (mark.asksForNote)
        _note.grab_focus();
}

void MarkEditor::takeNote()
{
    const std::string note = _note.get_buffer()->get_text();
    if (note == displayText(_mark.note).raw())
        return;
    _mark.note = note;
    _actions.setNote(_mark.number, note);
}

void MarkEditor::copy()
{
    const std::string note = _note.get_buffer()->get_text();
    _page.get_clipboard()->set_text(displayText(note.empty() ? _mark.text : _mark.text + "\n\n" + note));
    _popover.popdown();
}

MarkSigns::MarkSigns(Gtk::Overlay& page, std::function<void()> undo)
    : _page(page)
    , _undo(_("Undo"))
{
    g_object_set(_ribbon.gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_IMG, nullptr);
    _ribbon.add_css_class("bookmark-ribbon");
    _ribbon.set_halign(Gtk::Align::END);
    _ribbon.set_valign(Gtk::Align::START);
    _ribbon.set_can_target(false);
    _ribbon.set_visible(false);
    setAccessibleName(_ribbon, _("This page has a bookmark"));
    makeStatus(_text);
    _text.set_wrap(true);
    gtk_label_set_natural_wrap_mode(_text.gobj(), GTK_NATURAL_WRAP_NONE);
    _bar.add_css_class("mark-notice");
    _bar.set_spacing(12);
    _bar.set_halign(Gtk::Align::CENTER);
    _bar.set_valign(Gtk::Align::END);
    _bar.set_visible(false);
    _bar.append(_text);
    _bar.append(_undo);
    _undo.signal_clicked().connect(std::move(undo));
    _page.add_overlay(_ribbon);
    _page.add_overlay(_bar);
}

MarkSigns::~MarkSigns()
{
    _end.disconnect();
    _page.remove_overlay(_bar);
    _page.remove_overlay(_ribbon);
}

void MarkSigns::tell(const std::string& text, bool isUndone)
{
    _end.disconnect();
    _text.set_text(text);
    _undo.set_visible(isUndone);
    _bar.set_visible(!text.empty());
}

void MarkSigns::offerUndo(const std::string& text)
{
    tell(text, true);
}

void MarkSigns::showNotice(const std::string& text)
{
    tell(text, false);
    _end = Glib::signal_timeout().connect(
        [this] {
            _bar.set_visible(false);
            return false;
        },
        noticeTime);
}

}
