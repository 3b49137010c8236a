#include "catalogue/PreparedRecords.hpp"

#include "catalogue/Catalogue.hpp"

#include <gtest/gtest.h>
#include <thread>

namespace pagora {

namespace {

Value storedBook(const std::string& name)
{
    return Value::Dictionary { { "Title", name }, { "ePubPath", "/library/" + name + ".epub" } };
}

std::vector<std::string> titlesOf(const std::vector<BookInfoPtr>& books)
{
    std::vector<std::string> titles;
    for (const auto& book : books)
        titles.push_back(book->title().value_or(""));
    return titles;
}

}

TEST(PreparedRecords, AreThoseOfTheEntriesThatTheyWereMadeFor)
{
    const Value::Array entries { storedBook("a"), storedBook("b") };
    PreparedRecords prepared;
    std::jthread([&] { prepared.make(entries); }).join();
    EXPECT_EQ(titlesOf(prepared.take(entries)), (std::vector<std::string> { "a", "b" }));
}

TEST(PreparedRecords, OfOtherEntriesAreMadeAnew)
{
    const auto kept = storedBook("kept");
    PreparedRecords prepared;
    prepared.make({ kept, storedBook("removed"), storedBook("removed too") });
    EXPECT_EQ(titlesOf(prepared.take({ kept, storedBook("new") })), (std::vector<std::string> { "kept", "new" }));
}

TEST(PreparedRecords, AreNotKeptOnceTheyAreTaken)
{
    const Value::Array entries { storedBook("a") };
    PreparedRecords prepared;
    prepared.make(entries);
    const auto taken = prepared.take(entries);
    prepared.make(entries);
    EXPECT_EQ(taken.front().use_count(), 1);
    EXPECT_NE(prepared.take(entries).front(), taken.front());
}

TEST(PreparedRecords, BecomeTheRecordsOfTheCatalogue)
{
    const Value::Array entries { storedBook("a"), storedBook("b") };
    PreparedRecords prepared;
    prepared.make(entries);
    Catalogue catalogue;
    catalogue.setBookData(entries);
    catalogue.bookDataToList(&prepared);
    EXPECT_EQ(titlesOf(*catalogue.bookList()), (std::vector<std::string> { "a", "b" }));
    EXPECT_EQ(catalogue.epubLocations(), (std::vector<std::string> { "/library/a.epub", "/library/b.epub" }));
}

}
