#pragma once

#include <string>

namespace pagora {

// Translations of the texts that the user reads, from po/. The texts in the code are English and are used where a
// translation is missing. Thread-safe.

// Returns the translated text.
const char* _(const char* text) __attribute__((format_arg(1)));

// Marks a constant for translation; the code that shows it calls `_()`.
constexpr const char* N_(const char* text)
{
    return text;
}

// Returns the plural form of the text for `count`. Languages differ in the number of forms.
const char* plural(const char* one, const char* many, unsigned long count)
    __attribute__((format_arg(1), format_arg(2)));

// Fills in the placeholders of the text as printf does.
std::string formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Reads the user's language from the environment. Called once at startup, before other threads exist.
void startTranslation();

}
