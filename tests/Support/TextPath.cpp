// Takes a transcript of about as many characters as its argument says through everything that happens to it without a
// language model, for a test that counts instructions.

#include "Cleanup/LocalFormatting.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    const int length = argc > 1 ? std::atoi(argv[1]) : 0;
    QString transcript;
    transcript.reserve(length + 200);
    while (transcript.size() < length) {
        transcript += u"wir treffen uns am Montag um zehn new line please bring the report to the office with you ";
    }
    const auto segments = talmo::splitIntoSegments(transcript);
    std::vector<QString> formatted;
    formatted.reserve(segments.size());
    for (const auto &segment : segments) {
        formatted.push_back(talmo::formatLocally(talmo::detectBulletRequest(segment.text).text));
    }
    std::printf("%lld\n", static_cast<long long>(talmo::joinSegments(formatted, segments).size()));
    return EXIT_SUCCESS;
}
