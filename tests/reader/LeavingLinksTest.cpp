#include "reader/LeavingLinks.hpp"

#include <gtest/gtest.h>

using namespace pagora;

namespace {

Url url(const std::string& text)
{
    return *Url::fromString(text);
}

}

TEST(LeavingLinks, TakesServersAndOtherPrograms)
{
    LeavingLinks links;
    EXPECT_TRUE(links.take(url("http://example.org/")));
    EXPECT_TRUE(links.take(url("HTTPS://example.org/")));
    EXPECT_TRUE(links.take(url("mailto:someone@example.org")));
}

TEST(LeavingLinks, LeavesWhatBelongsToTheBook)
{
    LeavingLinks links;
    for (const auto* text : { "file:///book/a.xhtml", "/book/a.xhtml", "a.xhtml", "data:text/plain,a", "blob:1",
             "about:blank", "javascript:void(0)" })
        EXPECT_FALSE(links.take(url(text))) << text;
}

TEST(LeavingLinks, TakesAnAddressOnce)
{
    LeavingLinks links;
    EXPECT_TRUE(links.take(url("http://example.org/")));
    EXPECT_FALSE(links.take(url("http://example.org/")));
    links.clear();
    EXPECT_TRUE(links.take(url("http://example.org/")));
}

TEST(LeavingLinks, TakesNoFloodOfAddresses)
{
    LeavingLinks links;
    int taken = 0;
    for (int i = 0; i < 100; ++i)
        taken += links.take(url("http://example.org/" + std::to_string(i)));
    EXPECT_EQ(taken, 20);
}
