#pragma once

#include <string>
#include <vector>

namespace pagora::test {

// Attributes of a member besides its name and bytes.
enum class MemberKind { Plain, Link, Encrypted, NameNotUtf8 };

// Builds EPUB files: a valid book with the changes of the test.
//
// Members: mimetype, META-INF/container.xml, OEBPS/content.opf, OEBPS/toc.ncx, OEBPS/chapter<n>.xhtml from 1 on,
// OEBPS/images/cover.jpg.
class EpubBuilder {
public:
    EpubBuilder() = default;
    // Returns an archive without members.
    static EpubBuilder empty();

    EpubBuilder& title(std::string title);
    EpubBuilder& author(std::string author);
    EpubBuilder& identifier(std::string identifier);
    EpubBuilder& chapters(int count);
    EpubBuilder& cover(int width, int height);
    // A fixed-layout book, with display options and a viewport in each page.
    EpubBuilder& fixedLayout(int width, int height);

    // Adds or replaces a member. The bytes of a symbolic link are its target.
    EpubBuilder& member(std::string name, std::string bytes, MemberKind kind = MemberKind::Plain);
    // Adds a member even if the name exists.
    EpubBuilder& anotherMember(std::string name, std::string bytes);
    EpubBuilder& without(const std::string& name);

    // Writes the archive and returns its path.
    std::string write(const std::string& path) const;

private:
    struct Member {
        std::string name;
        std::string bytes;
        MemberKind kind = MemberKind::Plain;
    };
    std::vector<Member> members() const;
    std::string packageDocument() const;
    std::string contents() const;
    std::string page(int number) const;

    bool _isBook = true;
    std::string _title = "A Title";
    std::string _author = "An Author";
    std::string _identifier = "9780000000001";
    int _chapters = 3;
    int _coverWidth = 60;
    int _coverHeight = 80;
    int _pageWidth = 0;
    int _pageHeight = 0;
    std::vector<Member> _changes;
    std::vector<Member> _doubles;
    std::vector<std::string> _removed;
};

// Returns a picture of one colour, as bytes in a format such as "jpeg" or "png". An `alpha` of 0 makes it transparent.
std::string picture(int width, int height, const std::string& format = "jpeg", unsigned char alpha = 255);

// Replaces every occurrence of `from` by `to` in a text, or in a file.
std::string replaced(std::string text, const std::string& from, const std::string& to);
void replaceInFile(const std::string& path, const std::string& from, const std::string& to);
std::string contentsOf(const std::string& path);
// Writes a file, creates its parent folders, and returns its path.
std::string makeFile(const std::string& path, const std::string& bytes);

}
