#include "controls/gtk/FontLetters.hpp"

#include <cctype>
#include <fontconfig/fontconfig.h>
#include <string_view>

namespace pagora {

namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// A font may lack one letter in this many.
constexpr FcChar32 rareLetters = 20;

// Returns null if fontconfig does not know the language.
const FcCharSet* lettersOf(const std::string& language)
{
    std::string name;
    for (const char letter : language)
        name += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    const auto known
        = [](const std::string& tag) { return FcLangGetCharSet(reinterpret_cast<const FcChar8*>(tag.c_str())); };
    if (const auto* const letters = known(name))
        return letters;
    // The language without its region. Fontconfig knows Chinese only with a region.
    const auto base = name.substr(0, name.find('-'));
    if (base == "zh")
        return known(name.find("hant") != std::string::npos ? "zh-tw" : "zh-cn");
    return known(base);
}

bool isWrittenBy(FcPattern* face)
{
    FcCharSet* characters = nullptr;
    if (FcPatternGetCharSet(face, FC_CHARSET, 0, &characters) != FcResultMatch)
        return false;
    for (const char letter : letters) {
        if (!FcCharSetHasChar(characters, static_cast<FcChar32>(letter)))
            return false;
    }
    return true;
}

// Returns whether the face is a symbol font, whose glyphs replace letters.
bool isOfSigns(FcPattern* face)
{
    FcBool isOfSigns = FcFalse;
    return FcPatternGetBool(face, FC_SYMBOL, 0, &isOfSigns) == FcResultMatch && isOfSigns;
}

}

bool isWrittenByAnyFont(const std::string& language)
{
    const FcCharSet* const letters = lettersOf(language);
    if (!letters || FcCharSetHasChar(letters, 'a'))
        return true;
    const auto count = FcCharSetCount(letters);
    FcPattern* const pattern = FcPatternCreate();
    FcObjectSet* const wanted = FcObjectSetBuild(FC_CHARSET, nullptr);
    FcFontSet* const faces = FcFontList(nullptr, pattern, wanted);
    bool isWritten = false;
    for (int i = 0; faces && i < faces->nfont && !isWritten; ++i) {
        FcCharSet* own = nullptr;
        isWritten = FcPatternGetCharSet(faces->fonts[i], FC_CHARSET, 0, &own) == FcResultMatch
            && FcCharSetSubtractCount(letters, own) * rareLetters <= count;
    }
    if (faces)
        FcFontSetDestroy(faces);
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(pattern);
    return isWritten;
}

bool hasLatinLetters(const std::string& family)
{
    FcPattern* const pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcObjectSet* const wanted = FcObjectSetBuild(FC_CHARSET, FC_SYMBOL, nullptr);
    FcFontSet* const faces = FcFontList(nullptr, pattern, wanted);
    // Each face is checked: symbol fonts may come in several formats, and only some declare it.
    bool isLatin = true;
    for (int i = 0; faces && i < faces->nfont && isLatin; ++i)
        isLatin = isWrittenBy(faces->fonts[i]) && !isOfSigns(faces->fonts[i]);
    if (faces)
        FcFontSetDestroy(faces);
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(pattern);
    return isLatin;
}

}
