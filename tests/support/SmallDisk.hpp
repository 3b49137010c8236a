#pragma once

#include <csignal>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>

namespace pagora::test {

// Simulates a full disk in a folder for a forked process: with a private mount if the process may mount, otherwise with
// a limit on the size of files.
class SmallDisk {
public:
    SmallDisk(std::string folder, unsigned long bytes)
        : _folder(std::move(folder))
    {
        _isMounted = unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
            && mount("pagora-test", _folder.c_str(), "tmpfs", 0, options(bytes).c_str()) == 0;
        if (_isMounted)
            return;
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &_unlimited);
        rlimit limit = _unlimited;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    void makeRoom()
    {
        if (_isMounted)
            mount("pagora-test", _folder.c_str(), "tmpfs", MS_REMOUNT, options(1u << 30).c_str());
        else
            setrlimit(RLIMIT_FSIZE, &_unlimited);
    }

private:
    static std::string options(unsigned long bytes) { return "size=" + std::to_string(bytes); }

    std::string _folder;
    bool _isMounted = false;
    rlimit _unlimited {};
};

}
