#include "find/NoteText.hpp"

#include <gtest/gtest.h>

using namespace pagora;

TEST(NoteText, IsTheTextOfTheElement)
{
    EXPECT_EQ(noteText("<p id='m'>no</p><aside id='n'><p>One  <i>two</i>.</p><p>Three</p></aside><p>no</p>", "n"),
        "One two.\nThree");
}

TEST(NoteText, IsTheParagraphThatAMarkIsIn)
{
    EXPECT_EQ(noteText("<p>before</p><p><a id='n' href='#r'>1</a> The <b>note</b>.</p><p>no</p>", "n"), "1 The note.");
    EXPECT_EQ(noteText("<a id='n'/><p>The note.</p><p>no</p>", "n"), "The note.");
    EXPECT_EQ(noteText("<p><a name='n'></a>The note.</p>", "n"), "The note.");
}

TEST(NoteText, GoesOnBehindANumberOfItsOwn)
{
    EXPECT_EQ(noteText("<dl><dt id='n'>1</dt><dd>The note.</dd><dt>2</dt></dl>", "n"), "1\nThe note.");
}

TEST(NoteText, HoldsNoScripts)
{
    EXPECT_EQ(noteText("<div id='n'><script>alert(1)</script><style>p{}</style>a<div>b</div></div>c", "n"), "a\nb");
}

TEST(NoteText, IsMissingWithoutElementOrText)
{
    EXPECT_EQ(noteText("<p id='m'>a</p>", "n"), std::nullopt);
    EXPECT_EQ(noteText("<p id='n'></p>", "n"), std::nullopt);
    EXPECT_EQ(noteText("<p id=''>a</p>", ""), std::nullopt);
}

TEST(NoteText, HasABound)
{
    const auto text = noteText("<p id='n'>" + std::string(100'000, 'a') + "</p>", "n");
    ASSERT_TRUE(text);
    EXPECT_LE(text->size(), maxNoteBytes + 3);
    std::string many;
    for (int i = 0; i < 100'000; ++i)
        many += "é";
    EXPECT_TRUE(noteText("<p id='n'>a" + many + "</p>", "n")->ends_with("é…"));
}
