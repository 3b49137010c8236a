#include "base/Json.hpp"
#include "base/Translation.hpp"
#include "base/UserFolders.hpp"
#include "store/DefaultsRecovery.hpp"

#include <cstdio>

// pagora-defaults [KEY]: prints Pagora's stored values as JSON: one object with all keys, or only the value of
// KEY. Read-only. Can be used while Pagora runs.
int main(int argc, char** argv)
{
    using namespace pagora;
    startTranslation();
    if (argc > 2) {
        std::fprintf(stderr, "%s\n", _("Usage: pagora-defaults [KEY]"));
        return 2;
    }
    const auto values = readDefaults(defaultsFolder());
    if (!values) {
        std::fprintf(stderr, "pagora-defaults: %s\n", values.reason().c_str());
        return 1;
    }
    std::string text;
    if (argc == 1)
        text = jsonText(*values);
    else if (const Value* value = values->find(argv[1]))
        text = jsonText(*value);
    else {
        std::fprintf(stderr, _("pagora-defaults: nothing is stored under %s\n"), argv[1]);
        return 1;
    }
    std::puts(text.c_str());
    return 0;
}
