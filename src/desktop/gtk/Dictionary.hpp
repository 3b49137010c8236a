#pragma once

#include <giomm/desktopappinfo.h>

#include <functional>
#include <string>

namespace pagora {

// Finds an installed application by the name of its desktop file; null if it is not installed.
using ApplicationFinder = std::function<Glib::RefPtr<Gio::DesktopAppInfo>(const std::string& id)>;
Glib::RefPtr<Gio::DesktopAppInfo> installedApplication(const std::string& id);

// Starts the first installed dictionary program that is known to take words. Returns false if there is none or it
// cannot be started.
bool lookUpInDictionary(const std::string& words, const ApplicationFinder& find = installedApplication);

}
