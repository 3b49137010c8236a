#pragma once

#include <csignal>
#include <fstream>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace pagora::test {

// Makes a folder a small disk for a forked process: with a private mount, for which an ordinary user takes a user
// namespace, as long as the process has one thread. Otherwise it limits the size of files, but not in confined
// processes.
class SmallDisk {
public:
    SmallDisk(std::string folder, unsigned long bytes)
        : _folder(std::move(folder))
    {
        _isMounted = mayMount() && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
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
    // The process keeps its user and its group.
    static bool mayMount()
    {
        const auto user = std::to_string(geteuid());
        const auto group = std::to_string(getegid());
        if (unshare(CLONE_NEWNS) == 0)
            return true;
        return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && tell("setgroups", "deny")
            && tell("uid_map", user + ' ' + user + " 1") && tell("gid_map", group + ' ' + group + " 1");
    }
    static bool tell(const std::string& file, const std::string& text)
    {
        return static_cast<bool>(std::ofstream("/proc/self/" + file) << text << std::flush);
    }
    static std::string options(unsigned long bytes) { return "size=" + std::to_string(bytes); }

    std::string _folder;
    bool _isMounted = false;
    rlimit _unlimited {};
};

}
