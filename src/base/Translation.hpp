#pragma once

#include <string>

namespace pagora {

// What the program says to the person goes through these; the translations are in po/. The texts in the code are
// English, and are what is said where there is no translation. Any thread.

// The text in the person's language.
const char* _(const char* text) __attribute__((format_arg(1)));

// Marks a text that is translated where it is shown.
constexpr const char* N_(const char* text)
{
    return text;
}

// The text for `count` of something, which English has two of and other languages more or fewer.
const char* plural(const char* one, const char* many, unsigned long count)
    __attribute__((format_arg(1), format_arg(2)));

// The text with its placeholders filled in, as printf does it.
std::string formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Takes the person's language from the environment. Once, at the very start, while there is one thread.
void startTranslation();

}
