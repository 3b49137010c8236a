#include "controls/gtk/FontLetters.hpp"

#include <fontconfig/fontconfig.h>
#include <string_view>

namespace pagora {

namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

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

// A symbol font whose glyphs replace letters.
bool isOfSigns(FcPattern* face)
{
    FcBool isOfSigns = FcFalse;
    return FcPatternGetBool(face, FC_SYMBOL, 0, &isOfSigns) == FcResultMatch && isOfSigns;
}

}

bool hasLatinLetters(const std::string& family)
{
    FcPattern* const pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcObjectSet* const wanted = FcObjectSetBuild(FC_CHARSET, FC_SYMBOL, nullptr);
    FcFontSet* const faces = FcFontList(nullptr, pattern, wanted);
    // Check each face: symbol fonts may come in several formats, and only some declare it.
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
