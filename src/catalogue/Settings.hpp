#pragma once

#include "store/UserDefaults.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace pagora {

// The keys of the defaults store.
namespace defaults_keys {
inline constexpr const char* BookData = "BookData";
inline constexpr const char* BundleVersion = "BundleVersion";
inline constexpr const char* PreviousSuccessfulLaunch = "PreviousSuccessfulLaunch";
inline constexpr const char* DragDropMode = "DragDropMode";
inline constexpr const char* Default = "Default";
inline constexpr const char* FontName = "FontName";
inline constexpr const char* FontSize = "FontSize";
inline constexpr const char* Columns = "Columns";
inline constexpr const char* Background = "Background";
// The archives of the books that were read, most recent first.
inline constexpr const char* LastRead = "LastRead";
// Archives that are being moved to the Trash; absent if there are none.
inline constexpr const char* Removals = "Removals";
}

// The reader's display settings as last used. Unset numbers are -1, an unset font is nullopt. Main thread only.
struct ReaderSettings {
    std::optional<std::string> curFontName;
    float curFontSize = -1;
    std::int32_t curNumOfColumns = -1;
    std::int32_t curColorOption = -1;

    static ReaderSettings load(const UserDefaults& defaults);
    void store(UserDefaults& defaults) const;
};

// Stores "Default" and "DragDropMode" if they are absent.
void storeStartUpDefaults(UserDefaults& defaults);

}
