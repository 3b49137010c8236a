#include "files/MountedVolume.hpp"

#include <gio/gio.h>
#include <gio/gunixmounts.h>

namespace pagora {

namespace {

bool isOnAnotherMachine(const std::string& path)
{
    g_autoptr(GFile) file = g_file_new_for_path(path.c_str());
    g_autoptr(GFileInfo) info
        = g_file_query_filesystem_info(file, G_FILE_ATTRIBUTE_FILESYSTEM_REMOTE, nullptr, nullptr);
    return info && g_file_info_get_attribute_boolean(info, G_FILE_ATTRIBUTE_FILESYSTEM_REMOTE);
}

}

FileMount mountOf(const std::string& path)
{
    FileMount found;
    found.isRemote = isOnAnotherMachine(path);
#if GLIB_CHECK_VERSION(2, 84, 0)
    if (GUnixMountEntry* entry = g_unix_mount_entry_for(path.c_str(), nullptr)) {
        found.folder = g_unix_mount_entry_get_mount_path(entry);
        found.isVolume = g_unix_mount_entry_guess_should_display(entry);
        g_unix_mount_entry_free(entry);
    }
#else
    if (GUnixMountEntry* entry = g_unix_mount_for(path.c_str(), nullptr)) {
        found.folder = g_unix_mount_get_mount_path(entry);
        found.isVolume = g_unix_mount_guess_should_display(entry);
        g_unix_mount_free(entry);
    }
#endif
    return found;
}

bool isMountedVolume(const FileMount& file, const FileMount& home)
{
    return (file.isRemote || file.isVolume) && file.folder != home.folder;
}

}
