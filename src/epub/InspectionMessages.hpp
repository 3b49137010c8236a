#pragma once

// Messages between the program and pagora-inspect. Each is an encoded dictionary.
namespace pagora::inspection_messages {

// A request contains one of these under the key Question.
inline constexpr const char* Question = "Question";
inline constexpr const char* EmptyScratch = "EmptyScratch";
// Inspects the archive whose descriptor is passed with the message.
inline constexpr const char* GetBookInfo = "GetBookInfo";
inline constexpr const char* CoverAhead = "CoverAhead";

// Sent with GetBookInfo: the archive's name, whether the first problem ends the inspection, and the prefetched cover.
inline constexpr const char* ArchiveName = "ArchiveName";
inline constexpr const char* StopsOnErrors = "StopsOnErrors";

// A cover, in either direction. Without a picture the cover file is not a picture.
inline constexpr const char* CoverSize = "CoverSize";
inline constexpr const char* CoverSum = "CoverSum";
inline constexpr const char* CoverPicture = "CoverPicture";

// The answer to GetBookInfo: whether the book is accepted, its record as a catalogue entry (a rejected book may have
// one too), its folder, the lines for the user and the lines for the log.
inline constexpr const char* IsAccepted = "IsAccepted";
inline constexpr const char* Record = "Record";
inline constexpr const char* EpubPath = "EpubPath";
inline constexpr const char* Lines = "Lines";
inline constexpr const char* LogLines = "LogLines";

}
