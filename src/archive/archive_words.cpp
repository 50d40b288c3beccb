#include "archive/archive_words.h"

#include <string_view>

#include "common/text.h"

namespace {

struct TroubleWords {
    std::string_view What;
    std::string_view Help;
};

TroubleWords WordsOf(ArchiveTrouble kind) {
    switch (kind) {
        case ArchiveTrouble::NoFolder:
            return {"its folder cannot be used.",
                    "Make sure that the folder exists and that you may write to it."};
        case ArchiveTrouble::ReadOnly:
            return {"it may not be written.", "Make sure that you may write to it and its folder."};
        case ArchiveTrouble::Locked:
            return {"another program holds it.",
                    "Close the program that holds it, then upload again."};
        case ArchiveTrouble::Full:
            return {"the disk is full.", "Make room on the disk, then upload again."};
        case ArchiveTrouble::Foreign:
            return {"the file there is not an archive.",
                    "Move it elsewhere: a new archive is made with the next upload."};
        case ArchiveTrouble::Damaged:
            return {"it is damaged.",
                    "Put a back-up in its place, or move it elsewhere: a new archive is made with "
                    "the next upload."};
        case ArchiveTrouble::Newer:
            return {"a newer version of the console made it.", "Use the newer version."};
        case ArchiveTrouble::Gone:
            return {"the logger was deleted from it meanwhile.", "Upload again to keep it anew."};
        default:
            return {"it could not be written.", "Upload again once this is mended."};
    }
}

}  // namespace

std::string TroubleText(ArchiveTrouble kind, const std::string& place, const std::string& words) {
    const TroubleWords known = WordsOf(kind);
    std::string text("The upload was not kept in the archive, or not all of it: ");
    text.append(known.What).append(LineBreak).append(known.Help).append(LineBreak);
    text.append(LineBreak).append(place);
    if (!words.empty()) {
        text.append(LineBreak).append(words);
    }
    return text;
}
