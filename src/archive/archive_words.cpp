#include "archive/archive_words.h"

#include <string_view>

#include "common/text.h"

namespace {

struct TroubleWords {
    std::string_view What;
    std::string_view Help;        ///< before the next upload
    std::string_view AccessHelp;  ///< before the archive is looked at again
};

TroubleWords WordsOf(ArchiveTrouble kind) {
    switch (kind) {
        case ArchiveTrouble::NoFolder:
            return {"its folder cannot be used.",
                    "Make sure that the folder exists and that you may write to it.",
                    "Make sure that the folder exists and that you may write to it."};
        case ArchiveTrouble::ReadOnly:
            return {"it may not be written.", "Make sure that you may write to it and its folder.",
                    "Make sure that you may read and write it and its folder."};
        case ArchiveTrouble::Locked:
            return {"another program holds it.",
                    "Close the program that holds it, then upload again.",
                    "Close the program that holds it."};
        case ArchiveTrouble::Full:
            return {"the disk is full.", "Make room on the disk, then upload again.",
                    "Make room on the disk."};
        case ArchiveTrouble::Foreign:
            return {"the file there is not an archive.",
                    "Move it elsewhere: a new archive is made with the next upload.",
                    "Move it elsewhere: a new archive is made with the next upload."};
        case ArchiveTrouble::Damaged:
            return {"it is damaged.",
                    "Put a back-up in its place, or move it elsewhere: a new archive is made with "
                    "the next upload.",
                    "Put a back-up in its place, or move it elsewhere: a new archive is made with "
                    "the next upload."};
        case ArchiveTrouble::Newer:
            return {"a newer version of the console made it.", "Use the newer version.",
                    "Use the newer version."};
        case ArchiveTrouble::Gone:
            return {"the logger was deleted from it meanwhile.", "Upload again to keep it anew.",
                    "Upload again to keep it anew."};
        case ArchiveTrouble::Away:
            return {"its server cannot be reached.",
                    "Make sure that the server runs and the network reaches it.",
                    "Make sure that the server runs and the network reaches it."};
        case ArchiveTrouble::Refused:
            return {"its server does not let this user in.",
                    "Make sure that user and password are those that its administrator gave.",
                    "Make sure that user and password are those that its administrator gave."};
        default:
            return {"it could not be written.", "Upload again once this is mended.",
                    "Try again once this is mended."};
    }
}

/// Of an archive on a server.
TroubleWords WordsOfServer(ArchiveTrouble kind) {
    const auto words = [](std::string_view what, std::string_view help) {
        return TroubleWords{what, help, help};
    };
    switch (kind) {
        case ArchiveTrouble::Away:
            return words("the server cannot be reached.",
                         "\"This Computer\" shows what was collected here.");
        case ArchiveTrouble::Refused:
            return words("the server does not let this user in, or not with this password.",
                         "\"Archive Settings...\" has user and password.");
        case ArchiveTrouble::ReadOnly:
            return words("this user may only read it.",
                         "Ask whoever looks after the server for a user who may do more.");
        case ArchiveTrouble::Locked:
            return words("another console is at it.", "Try again in a moment.");
        case ArchiveTrouble::Full:
            return words("the disk of the server is full.", "Tell whoever looks after the server.");
        case ArchiveTrouble::Foreign:
            return words("there is no archive in that database.",
                         "Choose another database, or have its tables made.");
        case ArchiveTrouble::Damaged:
            return words("it is damaged.", "Tell whoever looks after the server.");
        case ArchiveTrouble::Newer:
            return words("it was made for a newer version of the console.",
                         "Use the newer version.");
        case ArchiveTrouble::Gone:
            return words("the logger was deleted from it meanwhile.", "Look again.");
        default:
            return words("the server refuses.", "Try again once this is mended.");
    }
}

std::string Told(std::string_view head, std::string_view what, std::string_view help,
                 const std::string& place, const std::string& words) {
    std::string text(head);
    text.append(what).append(LineBreak).append(help).append(LineBreak);
    text.append(LineBreak).append(place);
    if (!words.empty()) {
        text.append(LineBreak).append(words);
    }
    return text;
}

}  // namespace

std::string TroubleText(ArchiveTrouble kind, const std::string& place, const std::string& words) {
    const TroubleWords known = WordsOf(kind);
    return Told("The upload was not kept in the archive, or not all of it: ", known.What,
                known.Help, place, words);
}

std::string AccessText(ArchiveTrouble kind, const std::string& place, const std::string& words) {
    const TroubleWords known = WordsOf(kind);
    return Told("The archive cannot be used: ", known.What, known.AccessHelp, place, words);
}

std::string SharedAccessText(ArchiveTrouble kind, const std::string& place,
                             const std::string& words) {
    const TroubleWords known = WordsOfServer(kind);
    return Told("The shared archive cannot be used: ", known.What, known.AccessHelp, place, words);
}

std::string WhatIsWrongThere(ArchiveTrouble kind) {
    return std::string(WordsOfServer(kind).What);
}
