#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

namespace pagora::test {

// A new folder that is deleted with its content by the destructor, or an existing folder that is kept.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "pagora-test-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            std::abort();
        _path = pattern;
    }
    explicit TemporaryFolder(std::string existing)
        : _path(std::move(existing))
        , _stays(true)
    {
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        if (!_stays)
            std::filesystem::remove_all(_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return _path; }
    std::string path(const std::string& name) const { return _path + "/" + name; }

private:
    std::string _path;
    bool _stays = false;
};

}
