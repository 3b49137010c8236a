#include "desktop/gtk/Dictionary.hpp"

#include "base/GObjectPtr.hpp"
#include "desktop/gtk/Graphics.hpp"

#include <glibmm/shell.h>

#include <sstream>

namespace pagora {

namespace {

// A dictionary program and how it takes words. There is no common interface: none handles the "dict" scheme.
struct Dictionary {
    const char* id;
    // Precedes the words in the argument.
    const char* option;
};
constexpr Dictionary dictionaries[] = {
    { "org.gnome.Dictionary.desktop", "--look-up=" },
    { "org.goldendict.GoldenDict.desktop", "" },
    { "xfce4-dict.desktop", "" },
    { "mate-dictionary.desktop", "--look-up=" },
};

// Returns the application's command without the field codes for files, which are separate words.
std::string commandOf(const Gio::DesktopAppInfo& application)
{
    std::istringstream words(application.get_commandline());
    std::string command;
    for (std::string word; words >> word;) {
        const bool isPlace = word.starts_with("@@") || (word.size() == 2 && word[0] == '%' && word[1] != '%');
        if (!isPlace)
            command += word + ' ';
    }
    return command;
}

// Quotes an argument for the command of a desktop file.
std::string quoted(const std::string& argument)
{
    std::string text = Glib::shell_quote(argument);
    for (auto at = text.find('%'); at != std::string::npos; at = text.find('%', at + 2))
        text.insert(at, "%");
    return text;
}

bool launch(const std::string& command, const std::string& name)
{
    const auto application = GObjectPtr<GAppInfo>::adopt(
        g_app_info_create_from_commandline(command.c_str(), name.c_str(), G_APP_INFO_CREATE_NONE, nullptr));
    const auto context = GObjectPtr<GAppLaunchContext>::adopt(makeLaunchContext());
    return application && g_app_info_launch(application.get(), nullptr, context.get(), nullptr);
}

}

Glib::RefPtr<Gio::DesktopAppInfo> installedApplication(const std::string& id)
{
    return Gio::DesktopAppInfo::create(id);
}

bool lookUpInDictionary(const std::string& words, const ApplicationFinder& find)
{
    // The text comes from a book and must not be taken as an option.
    const auto start = words.find_first_not_of("- ");
    if (start == std::string::npos)
        return false;
    for (const auto& dictionary : dictionaries) {
        const auto application = find(dictionary.id);
        if (!application || !application->should_show())
            continue;
        const auto command = commandOf(*application);
        return launch(command + quoted(dictionary.option + words.substr(start)), application->get_name());
    }
    return false;
}

}
