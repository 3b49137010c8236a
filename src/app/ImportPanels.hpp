#pragma once

#include "app/LibraryState.hpp"
#include "running/Task.hpp"

#include <functional>
#include <string>
#include <vector>

namespace pagora {

// Lets the user choose what is imported: files, or a folder. Main thread only.
class ImportPanels {
public:
    // `import` receives the paths of the files.
    ImportPanels(const Platform& platform, std::function<void(std::vector<std::string>)> import)
        : _platform(platform)
        , _import(std::move(import))
    {
    }

    void chooseFiles();
    // Lets the user choose files. They are imported if the message is that of an import, and otherwise ignored.
    void chooseFiles(const std::string& message);
    // Imports the books in the chosen folder and its subfolders. An alert reports a folder without books.
    void chooseFolder();

private:
    Task<void> importBelow(std::string folder);

    Platform _platform;
    std::function<void(std::vector<std::string>)> _import;
    Task<void> _looking;
};

}
