#include "base/UserFolders.hpp"

#include <glib.h>

namespace pagora {

std::string homeFolder()
{
    return g_get_home_dir();
}

std::string documentsFolder()
{
    // xdg-user-dirs sets a disabled folder to the home folder.
    const char* folder = g_get_user_special_dir(G_USER_DIRECTORY_DOCUMENTS);
    if (!folder || homeFolder() == folder)
        return homeFolder() + "/Documents";
    return folder;
}

std::string cachesFolder()
{
    return g_get_user_cache_dir();
}

std::string defaultsFolder()
{
    return std::string(g_get_user_data_dir()) + "/" + PAGORA_IDENTIFIER;
}

}
