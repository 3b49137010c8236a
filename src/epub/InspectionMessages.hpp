#pragma once

// Messages between the program and pagora-inspect. Each is an encoded dictionary.
namespace pagora::inspection_messages {

// A question asks for one of these.
inline constexpr const char* Question = "Question";
inline constexpr const char* EmptyScratch = "EmptyScratch";
// Of the archive that comes open with the message.
inline constexpr const char* GetBookInfo = "GetBookInfo";
inline constexpr const char* CoverAhead = "CoverAhead";

// With GetBookInfo: the archive's name, whether the first problem ends the inspection, and the prefetched cover.
inline constexpr const char* ArchiveName = "ArchiveName";
inline constexpr const char* StopsOnErrors = "StopsOnErrors";

// A cover, in either direction; without a picture the file is none.
inline constexpr const char* CoverSize = "CoverSize";
inline constexpr const char* CoverSum = "CoverSum";
inline constexpr const char* CoverPicture = "CoverPicture";

// The answer to GetBookInfo: whether the book is accepted, its record as a catalogue entry (a rejected book may have
// one too), its folder, the lines for the user and those for the log.
inline constexpr const char* IsAccepted = "IsAccepted";
inline constexpr const char* Record = "Record";
inline constexpr const char* EpubPath = "EpubPath";
inline constexpr const char* Lines = "Lines";
inline constexpr const char* LogLines = "LogLines";

}
