#include "catalogue/Settings.hpp"

#include "base/Numbers.hpp"

namespace pagora {

using namespace defaults_keys;

ReaderSettings ReaderSettings::load(const UserDefaults& defaults)
{
    ReaderSettings settings;
    settings.curFontName = defaults.stringForKey(FontName);
    if (defaults.hasKey(FontSize))
        settings.curFontSize = static_cast<float>(defaults.realForKey(FontSize));
    if (defaults.hasKey(Columns))
        settings.curNumOfColumns = low32(static_cast<std::uint64_t>(defaults.integerForKey(Columns)));
    if (defaults.hasKey(Background))
        settings.curColorOption = low32(static_cast<std::uint64_t>(defaults.integerForKey(Background)));
    return settings;
}

void ReaderSettings::store(UserDefaults& defaults) const
{
    if (curFontName)
        defaults.setObject(FontName, *curFontName);
    defaults.setObject(FontSize, static_cast<double>(curFontSize));
    defaults.setObject(Columns, static_cast<std::int64_t>(curNumOfColumns));
    defaults.setObject(Background, static_cast<std::int64_t>(curColorOption));
}

void storeStartUpDefaults(UserDefaults& defaults)
{
    if (!defaults.hasKey(Default))
        defaults.setObject(Default, true);
    if (!defaults.hasKey(DragDropMode))
        defaults.setObject(DragDropMode, "Copy");
}

}
