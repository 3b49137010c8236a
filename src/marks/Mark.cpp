#include "marks/Mark.hpp"

#include <glib.h>

#include <algorithm>

namespace pagora {

namespace {

// The names in the order of `MarkColor`.
constexpr std::array<const char*, markColors.size()> colorNames { "yellow", "orange", "pink", "purple", "blue",
    "green" };

std::int64_t microseconds(const std::string& time)
{
    GTimeZone* utc = g_time_zone_new_utc();
    GDateTime* date = g_date_time_new_from_iso8601(time.c_str(), utc);
    g_time_zone_unref(utc);
    if (!date)
        return 0;
    const auto since1970 = g_date_time_to_unix(date) * G_USEC_PER_SEC + g_date_time_get_microsecond(date);
    g_date_time_unref(date);
    return since1970;
}

}

const char* nameOf(MarkColor color)
{
    return colorNames[static_cast<std::size_t>(color)];
}

MarkColor markColorFrom(const std::string& name)
{
    const auto found = std::find(colorNames.begin(), colorNames.end(), name);
    return found == colorNames.end() ? MarkColor::Yellow
                                     : markColors[static_cast<std::size_t>(found - colorNames.begin())];
}

Mark::Kind Mark::kind() const
{
    if (isBookmark)
        return Kind::Bookmark;
    return note.empty() ? Kind::Highlight : Kind::Note;
}

std::string newMarkId()
{
    char* uuid = g_uuid_string_random();
    std::string id = std::string("urn:uuid:") + uuid;
    g_free(uuid);
    return id;
}

std::string timeNow()
{
    GDateTime* now = g_date_time_new_now_utc();
    char* text = g_date_time_format(now, "%Y-%m-%dT%H:%M:%S.%fZ");
    std::string time = text;
    g_free(text);
    g_date_time_unref(now);
    return time;
}

std::int64_t timeOfChange(const Mark& mark)
{
    return std::max(microseconds(mark.created), microseconds(mark.modified));
}

}
