// Template files: their format, their order in the lists, and hostile files.

#include "Recogniser.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <string>
#include <utility>

namespace Scrivo::test {

namespace {

namespace fs = std::filesystem;
using TemplatesGraphicsRecognizerUtil::loadPathes;
using TemplatesGraphicsRecognizerUtil::split;

/// Gives every test its own folder.
class TemplateFile : public ::testing::Test {
protected:
    void SetUp() override {
        m_folder = fs::path(::testing::TempDir()) /
                   ("scrivo-templates-" + std::to_string(std::random_device{}()));
        fs::create_directories(m_folder);
    }
    void TearDown() override { fs::remove_all(m_folder); }

    std::string write(const std::string& text, const std::string& name = "a.template") {
        std::ofstream(m_folder / name, std::ios::binary) << text;
        return (m_folder / name).string();
    }

    fs::path m_folder;
};

TEST(Split, LeavesOutEmptyFields) {
    using Fields = std::vector<std::string>;
    EXPECT_EQ(split("", ","), Fields{});
    EXPECT_EQ(split(",,,", ","), Fields{});
    EXPECT_EQ(split("ab", ""), Fields{"ab"});
    EXPECT_EQ(split(",a,,bc,", ","), (Fields{"a", "bc"}));
    EXPECT_EQ(split("a;b c,d", ", ;"), (Fields{"a", "b", "c", "d"}));
    EXPECT_EQ(split(std::string("a\0b,c", 5), ","), (Fields{std::string("a\0b", 3), "c"}));
}

TEST_F(TemplateFile, TokensBecomePathsInBothDirections) {
    struct Case {
        const char* text;
        std::vector<Path> forward;
    };
    const Case cases[] = {
        {"", {}},
        {" \n\t ", {}},
        {"0,0,100,0,100,100", {{{0, 0}, {100, 0}, {100, 100}}}},
        {"0,0,,,10,10", {{{0, 0}, {10, 10}}}},
        {",1,2,", {{{1, 2}}}},
        {"0,0,10", {{{0, 0}}}},
        {"5", {{}}},
        {",,,", {{}}},
        {"1, 2, 3, 4", {{}, {}, {}, {}}},
        {"1,2\r\n3,4\v5,6", {{{1, 2}}, {{3, 4}}, {{5, 6}}}},
        {"-1.5e2,+.25,0x10,1e-400", {{{-150, 0.25}, {16, 0}}}},
        {"abc,1x2,--3,4", {{{0, 1}, {0, 4}}}},
    };
    for (const Case& c : cases) {
        const auto paths = loadPathes(write(c.text));
        ASSERT_EQ(paths.size(), 2 * c.forward.size()) << c.text;
        for (std::size_t k = 0; k < c.forward.size(); ++k) {
            Path expected = c.forward[k];
            EXPECT_TRUE(hasBitsOf(paths[2 * k], expected)) << c.text;
            std::reverse(expected.begin(), expected.end());
            EXPECT_TRUE(hasBitsOf(paths[2 * k + 1], expected)) << c.text;
        }
    }
}

TEST_F(TemplateFile, FilesFillTheListsInOrder) {
    const std::string box = "0,0,10,0,10,10,0,10,0,0 ";
    const std::string rectangle = write(box + "7 " + box, "r");
    const std::string triangle = write("0,0,10,0,5,8,0,0", "t");
    const std::string isosceles = write("0,0,9,0,5,8,0,0", "i");
    const std::string ellipse = write("0,0,5,5,10,0,5,-5,0,0", "e");
    TemplatesGraphicsRecognizer recogniser;
    recogniser.loadTemplatesFromFile(rectangle, triangle, isosceles, ellipse);
    const auto& all = std::as_const(recogniser).allTemplates;
    std::string names;
    for (const GraphicTemplate& t : all) {
        names += std::to_string(t.id) + t.name[0];
        EXPECT_EQ(t.points.size(), 64U);
    }
    EXPECT_EQ(names, "1r1r1r1r2t2t2t2t3e3e");
    EXPECT_EQ(recogniser.polygonTemplates.size(), 8U);
    EXPECT_EQ(recogniser.ellipseTemplates.size(), 2U);
    EXPECT_TRUE(
        hasBitsOf(all[0].points, literal::normalizePath(loadPathes(rectangle)[0], recogniser)));
    recogniser.loadTemplatesFromFile("", triangle, m_folder / "missing", ellipse);
    EXPECT_EQ(all.size(), 14U);
    EXPECT_EQ(recogniser.addTemplate(2, "triangle", loadPathes(triangle)[0]), 7);
    EXPECT_EQ(recogniser.addTemplate(8, "arrow", loadPathes(triangle)[0]), 1);
    EXPECT_EQ(recogniser.polygonTemplates.size(), 11U);
    EXPECT_EQ(all.size(), 16U);
}

TEST_F(TemplateFile, OutlinesThatCannotBeResampledAreLeftOut) {
    TemplatesGraphicsRecognizer recogniser;
    const std::string file = write("1e17,0,1e17,64,2e17,3 1e17,0,100000000000000064,0 1,1,2,2,1,3");
    recogniser.loadTemplatesFromFile(file, "", "", "");
    EXPECT_EQ(recogniser.allTemplates.size(), 4U);
}

TEST_F(TemplateFile, HostileFilesAreRead) {
    std::string binary;
    ink::Hand hand(41);
    for (int i = 0; i < 50000; ++i) {
        binary += static_cast<char>(hand.below(256));
    }
    const std::string files[] = {
        write(binary, "binary"),
        write("1e999,-1e999,nan,NAN(7),inf,-infinity,1e-999,0", "numbers"),
        write(std::string(1 << 18, ','), "commas"),
        write("1," + std::string(1 << 18, '9') + ",3,4,1,3", "digits"),
        write(std::string("1,2\0,3,4,5,6,1,2", 16), "nul"),
    };
    TemplatesGraphicsRecognizer recogniser;
    for (const std::string& file : files) {
        recogniser.loadTemplatesFromFile(file, file, file, file);
    }
    const auto numbers = loadPathes(files[1]);
    ASSERT_EQ(numbers.size(), 2U);
    EXPECT_EQ(numbers[0][0].x, std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(numbers[0][1].y));
    EXPECT_EQ(numbers[0][3].x, 0.0);
    for (const Path& stroke : hand.strokes(9)) {
        EXPECT_TRUE(answersLiterally(recogniser, stroke));
    }
}

TEST_F(TemplateFile, OneTokenOfMegabytesIsRead) {
    constexpr std::size_t SIZE = 5'000'000;
    const std::string word = write(std::string(SIZE, 'a'), "word");
    const auto paths = loadPathes(word);
    ASSERT_EQ(paths.size(), 2U);
    EXPECT_TRUE(paths[0].empty() && paths[1].empty());

    std::string numbers;
    for (int k = 0; numbers.size() < SIZE; ++k) {
        numbers += std::to_string(k % 9973) + ".25,";
    }
    TemplatesGraphicsRecognizer recogniser;
    recogniser.loadTemplatesFromFile(write(numbers), "", "", "");
    ASSERT_EQ(recogniser.allTemplates.size(), 2U);
    EXPECT_EQ(std::as_const(recogniser).allTemplates[0].points.size(), 64U);
}

TEST_F(TemplateFile, UnreadableFilesAreEmpty) {
    EXPECT_TRUE(loadPathes("").empty());
    EXPECT_TRUE(loadPathes((m_folder / "missing").string()).empty());
    EXPECT_TRUE(loadPathes(m_folder.string()).empty()) << "a folder";
#ifdef __linux__
    EXPECT_TRUE(loadPathes("/proc/self/mem").empty()) << "opens, but its first read fails";
#endif
}

/// Makes a locale with a decimal comma, wherever the system's own locales are.
bool setCommaLocale(const fs::path& folder) {
    std::ofstream(folder / "source")
        << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\nEND LC_NUMERIC\n";
    const std::string command = "cd '" + folder.string() +
                                "' && localedef -c -i source -f ANSI_X3.4-1968 ./comma >log 2>&1";
    // It warns of missing categories and reports failure, but writes the locale.
    if (std::system(command.c_str()) == -1) {
        return false;
    }
    setenv("LOCPATH", folder.c_str(), 1);
    const bool isSet = std::setlocale(LC_NUMERIC, "comma") != nullptr;
    unsetenv("LOCPATH");
    return isSet || std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
}

TEST_F(TemplateFile, NumbersTakeTheLocalesDecimalSeparator) {
    const std::string file = write("1.5,2.75,3,4");
    if (!setCommaLocale(m_folder)) {
        GTEST_SKIP() << "no locale with a decimal comma: install localedef and the character maps";
    }
    const auto paths = loadPathes(file);
    std::setlocale(LC_NUMERIC, "C");
    ASSERT_EQ(paths.size(), 2U);
    EXPECT_TRUE(hasBitsOf(paths[0], {{1.0, 2.0}, {3.0, 4.0}}))
        << "a point ends the number where the comma is the separator";
    EXPECT_TRUE(hasBitsOf(loadPathes(file)[0], {{1.5, 2.75}, {3.0, 4.0}}));
}

}  // namespace

}  // namespace Scrivo::test
