#include "reflowable/DisplaySettings.hpp"

#include "paging/ColorThemes.hpp"

#include <utility>

namespace pagora {

namespace {

constexpr const char* menuFonts[] = { "Arial", "Baskerville", "Georgia", "Helvetica", "Palatino", "Times New Roman" };
constexpr const char* defaultFont = "Georgia";

void rebuildFontMenu(EpubWindow& window)
{
    auto& menu = window.fontMenu();
    menu.removeAllItems();
    for (const char* family : menuFonts)
        menu.addItem(family);
    menu.addSeparator();
    for (const auto& family : window.availableFontFamilies())
        menu.addItem(family);
}

}

void DisplaySettings::show(EpubWindow& window)
{
    rebuildFontMenu(window);
    if (!currentFont)
        currentFont = defaultFont;
    window.fontMenu().selectItemWithTitle(*currentFont);
    auto& fontSize = window.fontSizeSlider();
    if (currentFontSize == 0)
        currentFontSize = static_cast<float>((fontSize.minValue() + fontSize.maxValue()) * 0.5);
    auto& colors = window.colorControl();
    if (currentColorOption == 0)
        currentColorOption = colors.selectedSegment() + 1;
    colors.setSelectedSegment(currentColorOption - 1);
    if (numberOfColumns == 0)
        numberOfColumns = 2;
    window.setColumnCount(numberOfColumns);
    updatePageWidth(window);
    window.webView().setTextSizeMultiplier(currentFontSize);
    fontSize.setFloatValue(currentFontSize);
}

void DisplaySettings::updatePageWidth(EpubWindow& window)
{
    pageWidth = PageGeometry::pageWidthFor(window.webView().frame().width, numberOfColumns);
}

scripts::Layout DisplaySettings::layout(const PageGeometry& page) const
{
    scripts::Layout layout;
    if (currentColorOption != 1) {
        layout.text = cssColorForTheme(currentColorOption);
        layout.background = cssBackgroundColorForTheme(currentColorOption);
    }
    layout.font = currentFont.value_or(defaultFont);
    layout.pageWidth = page.pageWidth;
    layout.columnHeight = page.columnHeight();
    layout.imageHeight = page.imageHeight();
    return layout;
}

void DisplaySettings::adoptPending()
{
    for (const auto& adopt : std::exchange(pending, {}))
        adopt();
}

}
