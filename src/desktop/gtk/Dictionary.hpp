#pragma once

#include <giomm/desktopappinfo.h>

#include <functional>
#include <string>

namespace pagora {

// Finds an installed application by the name of its desktop file; null without it.
using ApplicationFinder = std::function<Glib::RefPtr<Gio::DesktopAppInfo>(const std::string& id)>;
Glib::RefPtr<Gio::DesktopAppInfo> installedApplication(const std::string& id);

// Starts the first installed dictionary that is known to take words, with these words. False where there is none, or
// where it cannot be started.
bool lookUpInDictionary(const std::string& words, const ApplicationFinder& find = installedApplication);

}
