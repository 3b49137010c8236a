#include "app/ImportPanels.hpp"

#include "app/LibraryFiles.hpp"
#include "base/Log.hpp"
#include "base/Path.hpp"
#include "base/Translation.hpp"

#include <unistd.h>

namespace pagora {

namespace {

constexpr const char* filesMessage = N_("Choose epub file(s) for import to Pagora Library");
constexpr const char* folderMessage = N_("Choose a folder with books for Pagora Library");

}

void ImportPanels::chooseFiles()
{
    chooseFiles(filesMessage);
}

void ImportPanels::chooseFiles(const std::string& message)
{
    const bool multiple = message.find("import") != std::string::npos;
    auto& defaults = _platform.defaults;
    if (defaults.boolForKey(defaults_keys::Default)) {
        if (chdir(_platform.program.homeFolder.c_str()) != 0)
            log("The home folder cannot be entered.");
        defaults.setObject(defaults_keys::Default, false);
        defaults.synchronize();
    }
    _platform.libraryWindow.runOpenPanel(
        _(message.c_str()), multiple, [this, multiple](const std::optional<std::vector<std::string>>& chosen) {
            if (!chosen)
                return;
            if (chosen->empty())
                log("ERROR ( importDialog ): No file to open");
            else if (multiple)
                _import(*chosen);
        });
}

void ImportPanels::chooseFolder()
{
    _platform.libraryWindow.runFolderPanel(_(folderMessage), [this](const std::optional<std::string>& folder) {
        if (folder)
            _looking = importBelow(*folder);
    });
}

Task<void> ImportPanels::importBelow(std::string folder)
{
    const auto books = std::make_shared<std::vector<std::string>>();
    auto found = _platform.runLoop.performInBackground([books, folder] { *books = booksBelow(folder); });
    co_await found;
    if (books->empty())
        _platform.libraryWindow.runAlertPanel(_("No books found"),
            formatted(
                _("There is no EPUB file in “%s”, nor in the folders below it."), lastPathComponent(folder).c_str()),
            _("OK"));
    else
        _import(std::move(*books));
}

}
