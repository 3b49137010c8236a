#include "desktop/gtk/DesktopWorkspace.hpp"

#include "base/GObjectPtr.hpp"
#include "base/Log.hpp"
#include "base/Path.hpp"
#include "base/UserFolders.hpp"
#include "desktop/LookUp.hpp"
#include "desktop/gtk/Dictionary.hpp"
#include "desktop/gtk/Graphics.hpp"
#include "files/CopyIntoFolder.hpp"

#include <giomm/appinfo.h>
#include <giomm/dbusconnection.h>
#include <giomm/file.h>
#include <gtkmm/recentmanager.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace pagora {

namespace {

// In milliseconds. The file manager may have to start first.
constexpr int fileManagerTimeout = 10'000;

// Maximum length of a scheme in the log.
constexpr std::size_t maxSchemeLength = 40;

void openInDefaultProgram(const std::string& uri)
{
    const auto context = GObjectPtr<GAppLaunchContext>::adopt(makeLaunchContext());
    g_app_info_launch_default_for_uri_async(uri.c_str(), context.get(), nullptr, nullptr, nullptr);
}

void openFolderOf(const std::string& path)
{
    openInDefaultProgram(Gio::File::create_for_path(deletingLastPathComponent(path))->get_uri());
}

void showItem(const Glib::RefPtr<Gio::DBus::Connection>& bus, const std::string& path)
{
    using Arguments = std::tuple<std::vector<Glib::ustring>, Glib::ustring>;
    const auto arguments = Glib::Variant<Arguments>::create({ { Gio::File::create_for_path(path)->get_uri() }, {} });
    bus->call(
        "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", "ShowItems", arguments,
        [bus, path](const Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                bus->call_finish(result);
            } catch (const Glib::Error&) {
                openFolderOf(path);
            }
        },
        "org.freedesktop.FileManager1", fileManagerTimeout);
}

}

std::vector<std::optional<std::string>> DesktopWorkspace::copyFiles(
    const std::string& source, const std::string& destination, const std::vector<std::string>& names)
{
    std::vector<std::optional<std::string>> copies;
    copies.reserve(names.size());
    for (const auto& name : names)
        copies.push_back(copyIntoFolder(appendingPathComponent(source, name), destination));
    return copies;
}

std::unique_ptr<PrefetchedCopy> DesktopWorkspace::prefetchCopy(const std::string& file, const std::string& destination)
{
    return PrefetchedCopy::of(file, destination);
}

bool DesktopWorkspace::canRecycleFile(const std::string& path) const
{
    // The portal resolves the file's real path, and reports only files that it can move.
    if (_where == Surroundings::Flatpak)
        return true;
    try {
        const auto info = Gio::File::create_for_path(path)->query_info(
            G_FILE_ATTRIBUTE_ACCESS_CAN_TRASH, Gio::FileQueryInfoFlags::NOFOLLOW_SYMLINKS);
        return info->get_attribute_boolean(G_FILE_ATTRIBUTE_ACCESS_CAN_TRASH);
    } catch (const Glib::Error&) {
        return false;
    }
}

bool DesktopWorkspace::recycleFiles(const std::string& source, const std::vector<std::string>& names)
{
    bool allWent = true;
    for (const auto& name : names) {
        try {
            allWent = Gio::File::create_for_path(appendingPathComponent(source, name))->trash() && allWent;
        } catch (const Glib::Error&) {
            allWent = false;
        }
    }
    return allWent;
}

void DesktopWorkspace::selectFile(const std::string& path)
{
    Gio::DBus::Connection::get(Gio::DBus::BusType::SESSION, [path](const Glib::RefPtr<Gio::AsyncResult>& result) {
        try {
            showItem(Gio::DBus::Connection::get_finish(result), path);
        } catch (const Glib::Error&) {
            openFolderOf(path);
        }
    });
}

bool DesktopWorkspace::isOnMountedVolume(const std::string& path)
{
    return path.starts_with("/Volume") || isMountedVolume(_mountOf(path), _mountOf(homeFolder()));
}

bool DesktopWorkspace::mayOpen(const Url& url, RequestedBy requestedBy)
{
    constexpr std::array<std::string_view, 2> always { "http", "https" };
    constexpr std::array<std::string_view, 3> byPress { "mailto", "tel", "sms" };
    const auto scheme = url.scheme();
    return std::ranges::find(always, scheme) != always.end()
        || (requestedBy == RequestedBy::User && std::ranges::find(byPress, scheme) != byPress.end());
}

void DesktopWorkspace::openURL(const Url& url, RequestedBy requestedBy)
{
    if (!mayOpen(url, requestedBy))
        return log("not opened: a link of the kind " + url.scheme().substr(0, maxSchemeLength));
    if (!Gio::AppInfo::get_default_for_uri_scheme(url.scheme()))
        return;
    openInDefaultProgram(url.text());
}

// A program in a Flatpak cannot see other programs.
void DesktopWorkspace::lookUp(const std::string& text)
{
    const auto words = wordsToLookUp(text);
    if (words.empty() || (_where != Surroundings::Flatpak && lookUpInDictionary(words)))
        return;
    openURL(webSearch(words), RequestedBy::User);
}

void DesktopWorkspace::noteNewRecentDocumentURL(const Url& url)
{
    Gtk::RecentManager::get_default()->add_item(url.text());
}

}
