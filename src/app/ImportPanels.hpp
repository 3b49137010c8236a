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
    // `import` receives the files' paths.
    ImportPanels(const Platform& platform, std::function<void(std::vector<std::string>)> import)
        : _platform(platform)
        , _import(std::move(import))
    {
    }

    void chooseFiles();
    // With a message about import, the files chosen are imported, otherwise nothing is done with the one chosen.
    void chooseFiles(const std::string& message);
    // The books in the folder and in the folders below it are imported; an alert tells of a folder without books.
    void chooseFolder();

private:
    Task<void> importBelow(std::string folder);

    Platform _platform;
    std::function<void(std::vector<std::string>)> _import;
    Task<void> _looking;
};

}
