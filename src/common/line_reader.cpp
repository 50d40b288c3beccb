#include "common/line_reader.h"

#include <streambuf>

bool LineReader::Next(std::string& line) {
    using Traits = std::streambuf::traits_type;
    line.clear();
    int c = file_.sbumpc();
    if (c == Traits::eof()) {
        return false;
    }
    while (c != Traits::eof() && c != '\n' && c != '\r') {
        if (line.size() < LongestLine) {
            line += Traits::to_char_type(c);
        }
        c = file_.sbumpc();
    }
    if (c == '\r' && file_.sgetc() == '\n') {
        file_.sbumpc();
    }
    return true;
}
