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
    EXPECT_TRUE(links.take(url("http://example.org/"), RequestedBy::Page));
    EXPECT_TRUE(links.take(url("HTTPS://example.org/"), RequestedBy::Page));
    EXPECT_TRUE(links.take(url("mailto:someone@example.org"), RequestedBy::Page));
}

TEST(LeavingLinks, LeavesWhatBelongsToTheBook)
{
    LeavingLinks links;
    for (const auto* text : { "file:///book/a.xhtml", "/book/a.xhtml", "a.xhtml", "data:text/plain,a", "blob:1",
             "about:blank", "javascript:void(0)" })
        EXPECT_FALSE(links.take(url(text), RequestedBy::Page)) << text;
}

TEST(LeavingLinks, TakesAnAddressOnce)
{
    LeavingLinks links;
    EXPECT_TRUE(links.take(url("http://example.org/"), RequestedBy::Page));
    EXPECT_FALSE(links.take(url("http://example.org/"), RequestedBy::Page));
    links.clear();
    EXPECT_TRUE(links.take(url("http://example.org/"), RequestedBy::Page));
}

TEST(LeavingLinks, TakesNoFloodOfAddresses)
{
    LeavingLinks links;
    int taken = 0;
    for (int i = 0; i < 100; ++i)
        taken += links.take(url("http://example.org/" + std::to_string(i)), RequestedBy::Page);
    EXPECT_EQ(taken, 20);
}

TEST(LeavingLinks, TakesEveryPressOfALink)
{
    LeavingLinks links;
    for (int i = 0; i < 30; ++i)
        EXPECT_TRUE(links.take(url("http://example.org/"), RequestedBy::User));
    EXPECT_FALSE(links.take(url("http://example.org/"), RequestedBy::Page));
    EXPECT_FALSE(links.take(url("file:///book/a.xhtml"), RequestedBy::User));
}
