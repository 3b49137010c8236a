// GLib leaks its first table of quarks when it grows the table. A suppression by stack does not work, because GLib's
// frames are missing from the stack, so the tables are marked here.

#ifdef __SANITIZE_ADDRESS__

#include <cstdint>
#include <link.h>
#include <sanitizer/lsan_interface.h>
#include <string_view>

// GCC does not install the header of these functions.
extern "C" int __sanitizer_get_ownership(const volatile void* memory);
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void* memory);

namespace {

constexpr std::size_t tableSize = 2048 * sizeof(char*);

// Searches GLib's variables for a pointer to a table of that size.
int ignoreTableOf(dl_phdr_info* library, std::size_t, void*)
{
    if (std::string_view(library->dlpi_name).find("libglib-2.0") == std::string_view::npos)
        return 0;
    for (int i = 0; i < library->dlpi_phnum; ++i) {
        const auto& segment = library->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || !(segment.p_flags & PF_W))
            continue;
        const auto start = (library->dlpi_addr + segment.p_vaddr + 7) & ~std::uintptr_t { 7 };
        const auto* const words = reinterpret_cast<void* const*>(start);
        for (std::size_t word = 0; word < segment.p_memsz / sizeof(void*) - 1; ++word) {
            if (__sanitizer_get_ownership(words[word]) && __sanitizer_get_allocated_size(words[word]) == tableSize)
                __lsan_ignore_object(words[word]);
        }
    }
    return 1;
}

[[maybe_unused]] const int ignored = dl_iterate_phdr(ignoreTableOf, nullptr);

}

#endif
