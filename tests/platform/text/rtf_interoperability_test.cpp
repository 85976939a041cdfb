// Another program's reader must see the same text in the same colours.
#include "platform/text/rtf.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <unistd.h>

namespace blockhouse {
namespace {

std::string htmlByUnrtf(const std::string& source) {
    std::string path = (std::filesystem::temp_directory_path() / "blockhouse-rtf-XXXXXX").string();
    ::close(::mkstemp(path.data()));
    std::ofstream(path, std::ios::binary) << source;
    std::string html;
    if (std::FILE* const output = ::popen(("unrtf --html " + path).c_str(), "r")) {
        std::array<char, 4096> part;
        for (std::size_t got = 0; (got = std::fread(part.data(), 1, part.size(), output)) > 0;)
            html.append(part.data(), got);
        EXPECT_EQ(::pclose(output), 0) << "this test needs the program unrtf";
    }
    std::filesystem::remove(path);
    return html;
}

Colour colourIn(const std::string& tag) {
    const long value = std::strtol(tag.c_str() + tag.find('#') + 1, nullptr, 16);
    return rgb(static_cast<int>(value >> 16), static_cast<int>((value >> 8) & 0xFF), static_cast<int>(value & 0xFF));
}

// The body of unrtf's page as text, "\n" for a line break, with a run for each character.
rtf::ColouredText shownIn(const std::string& html) {
    const std::map<std::string, char> entities = {
        {"&eacute;", '\xE9'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}};
    rtf::ColouredText shown;
    std::vector<rtf::ColourRun> open = {{1, defaultTextColour, defaultBackground}};
    const auto show = [&](char byte) {
        shown.text += byte;
        shown.runs.push_back(open.back());
    };
    for (std::size_t at = html.find("<body>") + 6; at < html.find("</body>");) {
        const char first = html[at];
        const std::size_t end = first == '<' ? html.find('>', at) + 1 : first == '&' ? html.find(';', at) + 1 : at + 1;
        const std::string piece = html.substr(at, end - at);
        at = end;
        if (first == '&')
            show(entities.at(piece));
        else if (piece == "<br>")
            show('\n');
        else if (piece.starts_with("</"))
            open.pop_back();
        else if (first == '<')
            open.push_back(open.back());
        else if (first != '\n') // its own layout
            show(first);
        if (piece.starts_with("<font color"))
            open.back().text = colourIn(piece);
        // Index 0 means no background; unrtf draws it in the colour that it takes for the table's entry 0, black.
        if (piece.starts_with("<span style=\"background"))
            open.back().background = piece.find("#000000") == std::string::npos ? colourIn(piece) : defaultBackground;
    }
    return shown;
}

TEST(RtfInteroperability, UnrtfShowsTheSameTextAndColours) {
    const Colour navy = rgb(0, 0, 128);
    const Colour paleYellow = rgb(255, 255, 200);
    const std::string text = "Unit {Tank} <1>\r\n Name = \"caf\xE9\" ; a \\ note\r\nlone\nends\rhere\r\n\r\nEnd & more";
    const std::string expected = "Unit {Tank} <1>\n Name = \"caf\xE9\" ; a \\ note\nlone\nends\nhere\n\nEnd & more";
    const auto length = [&](std::string_view from, std::string_view to) {
        return static_cast<std::uint32_t>(text.find(to) - text.find(from));
    };
    const std::vector<rtf::ColourRun> runs = {{4, navy, defaultBackground},
                                              {length(" {", ";"), defaultTextColour, defaultBackground},
                                              {length(";", "\r\nlone"), defaultTextColour, paleYellow},
                                              {length("\r\nlone", "End"), defaultTextColour, defaultBackground},
                                              {3, navy, paleYellow}};

    const rtf::ColouredText shown = shownIn(htmlByUnrtf(rtf::write(text, runs)));

    ASSERT_EQ(shown.text, expected);
    for (std::size_t place = 0; place < expected.size(); ++place) {
        const bool keyword = place < 4 || (place >= expected.find("End") && place < expected.find(" & "));
        const bool comment = place >= expected.find(';') && place < expected.find("\nlone");
        const bool marked = comment || (keyword && place > 4);
        EXPECT_EQ(shown.runs[place].text, keyword ? navy : defaultTextColour) << place;
        EXPECT_EQ(shown.runs[place].background, marked ? paleYellow : defaultBackground) << place;
    }
}

} // namespace
} // namespace blockhouse
