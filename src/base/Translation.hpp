#pragma once

#include <string>

namespace pagora {

// Translations of the texts that the user reads. They are in po/. The texts in the code are English and are used where
// there is no translation. Any thread.

// The translated text.
const char* _(const char* text) __attribute__((format_arg(1)));

// Marks a text that is translated where it is shown.
constexpr const char* N_(const char* text)
{
    return text;
}

// The plural form of the text for `count`. Languages differ in the number of forms.
const char* plural(const char* one, const char* many, unsigned long count)
    __attribute__((format_arg(1), format_arg(2)));

// The text with its placeholders filled in, as printf does it.
std::string formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Reads the user's language from the environment. Called once at startup, before other threads exist.
void startTranslation();

}
