#pragma once

#include "controls/Controls.hpp"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// Controls that record their calls. A test reads and sets their public fields; `click`, `moveTo` and `choose` simulate
// the user. A fake with a journal adds each call to it as "<name>.<operation>".

namespace pagora::test {

using Journal = std::vector<std::string>;

class FakeControl : public virtual Control {
public:
    void setHidden(bool value) override
    {
        hidden = value;
        note(value ? "hide" : "show");
    }
    bool isHidden() const override { return hidden; }
    void setEnabled(bool value) override { enabled = value; }
    bool isEnabled() const override { return enabled; }
    Rect frame() const override { return rect; }
    void setFrame(const Rect& value) override { rect = value; }
    void makeFirstResponder() override { ++timesFocused; }

    void keepJournal(Journal& lines, std::string asName)
    {
        journal = &lines;
        name = std::move(asName);
    }

    bool hidden = false;
    bool enabled = true;
    Rect rect;
    int timesFocused = 0;
    Journal* journal = nullptr;
    std::string name;

protected:
    void note(const std::string& operation)
    {
        if (journal)
            journal->push_back(name + "." + operation);
    }
};

class FakeTextField : public FakeControl, public virtual TextField {
public:
    void setStringValue(const std::string& value) override
    {
        text = value;
        texts.push_back(value);
        if (whenSet)
            whenSet(value);
    }
    std::string stringValue() const override { return text; }
    void sizeToFit() override { rect.width = pointsPerByte * static_cast<double>(text.size()); }

    static constexpr double pointsPerByte = 7;
    std::string text;
    // Every text that was set, in order.
    std::vector<std::string> texts;
    // Called with each text that is set.
    std::function<void(const std::string&)> whenSet;
};

class FakeButton : public FakeControl, public virtual Button {
public:
    void setAction(std::function<void()> value) override { action = std::move(value); }
    void click()
    {
        if (enabled && action)
            action();
    }

    std::function<void()> action;
};

class FakeProgressIndicator : public FakeControl, public virtual ProgressIndicator {
public:
    void setMinValue(double value) override { least = value; }
    void setMaxValue(double value) override { most = value; }
    void setDoubleValue(double number) override
    {
        value = number;
        values.push_back(number);
    }

    double least = 0;
    double most = 0;
    double value = 0;
    // Every value that was set, in order.
    std::vector<double> values;
};

class FakeSlider : public FakeControl, public virtual Slider {
public:
    double minValue() const override { return least; }
    double maxValue() const override { return most; }
    void setMinValue(double value) override { least = value; }
    void setMaxValue(double value) override { most = value; }
    float floatValue() const override { return value; }
    void setFloatValue(float number) override { value = number; }
    void setAction(std::function<void(EventType)> newAction) override { action = std::move(newAction); }
    void moveTo(float number, EventType event = EventType::LeftMouseUp)
    {
        value = number;
        if (action)
            action(event);
    }

    double least = 0;
    double most = 1;
    float value = 0;
    std::function<void(EventType)> action;
};

class FakeSegmentedControl : public FakeControl, public virtual SegmentedControl {
public:
    int selectedSegment() const override { return selected; }
    void setSelectedSegment(int segment) override { selected = segment; }
    // As in the layouts: the first segment has the tag 1.
    int tag(int segment) const override { return segment + 1; }
    void setAction(std::function<void()> value) override { action = std::move(value); }
    void choose(int segment)
    {
        selected = segment;
        if (action)
            action();
    }

    int selected = 0;
    std::function<void()> action;
};

class FakePopUpButton : public FakeControl, public virtual PopUpButton {
public:
    void removeAllItems() override { items.clear(); }
    void addItem(const std::string& title) override { items.push_back(title); }
    void addSeparator() override { items.push_back(separator); }
    void selectItemWithTitle(const std::string& title) override
    {
        for (const auto& item : items) {
            if (item == title)
                selected = title;
        }
    }
    std::string titleOfSelectedItem() const override { return selected; }
    void setAction(std::function<void()> value) override { action = std::move(value); }
    void choose(const std::string& title)
    {
        selected = title;
        if (action)
            action();
    }

    static constexpr const char* separator = "-";
    std::vector<std::string> items;
    std::string selected;
    std::function<void()> action;
};

class FakeColorView : public FakeControl, public virtual ColorView {
public:
    void setFillColor(const Color& color) override
    {
        fill = color;
        fills.push_back(color);
    }

    Color fill = Color::clear();
    // Every colour that was set, in order.
    std::vector<Color> fills;
};

class FakeMenu : public Menu {
public:
    struct Item {
        std::string title;
        bool hidden = false;
    };

    explicit FakeMenu(const std::vector<std::string>& titles = {})
    {
        for (const auto& title : titles)
            items.push_back({ title });
    }

    int numberOfItems() const override { return static_cast<int>(items.size()); }
    void setItemHidden(int index, bool hidden) override { items.at(static_cast<std::size_t>(index)).hidden = hidden; }
    void insertSeparator(int index) override { items.insert(items.begin() + index, { separator }); }

    // Returns the titles that are shown, from the top down.
    std::vector<std::string> shownTitles() const
    {
        std::vector<std::string> titles;
        for (const auto& item : items) {
            if (!item.hidden)
                titles.push_back(item.title);
        }
        return titles;
    }

    static constexpr const char* separator = "-";
    std::vector<Item> items;
};

}
