#include "vb/FileChannels.h"

#include "ErrorExpect.h"
#include "vb/Error.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;
using vb::FileMode;

namespace {

class FileChannelsTest : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = fs::temp_directory_path() / ("vb-channels-" + std::to_string(::getpid()));
        fs::create_directories(dir_);
    }
    void TearDown() override {
        vb::FileCloseAll();
        fs::remove_all(dir_);
    }

    std::string path(const std::string &name) const { return (dir_ / name).string(); }

    std::string write(const std::string &name, const std::string &bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    std::string read(const std::string &name) const {
        std::ifstream in(path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    fs::path dir_;
};

TEST_F(FileChannelsTest, PrintWritesLinesEndingInCrLf) {
    vb::FileOpen(1, path("slip.txt"), FileMode::Output);
    vb::PrintLine(1, "a");
    vb::PrintText(1, "b");
    vb::PrintLine(1, "c");
    vb::FileClose(1);
    EXPECT_EQ(read("slip.txt"), "a\r\nbc\r\n");

    vb::FileOpen(1, path("slip.txt"), FileMode::Append);
    vb::PrintLine(1, "d");
    vb::FileClose(1);
    EXPECT_EQ(read("slip.txt"), "a\r\nbc\r\nd\r\n");

    vb::FileOpen(1, path("slip.txt"), FileMode::Output);
    vb::FileClose(1);
    EXPECT_EQ(read("slip.txt"), "");
}

TEST_F(FileChannelsTest, LineInputReadsEveryKindOfLineEnd) {
    std::string file = write("settings.txt", "one\ntwo\r\n\nfour");
    vb::FileOpen(2, file, FileMode::Input);
    EXPECT_FALSE(vb::FileEOF(2));
    EXPECT_EQ(vb::LineInput(2), "one");
    EXPECT_EQ(vb::LineInput(2), "two");
    EXPECT_EQ(vb::LineInput(2), "");
    EXPECT_FALSE(vb::FileEOF(2));
    EXPECT_EQ(vb::LineInput(2), "four");
    EXPECT_TRUE(vb::FileEOF(2));
}

TEST_F(FileChannelsTest, ReadingPastTheEndRaises62AndLeavesTheChannelOpen) {
    std::string file = write("short.txt", "only\r\n");
    vb::FileOpen(4, file, FileMode::Input);
    EXPECT_EQ(vb::LineInput(4), "only");
    EXPECT_TRUE(vb::FileEOF(4));
    EXPECT_VB_ERROR(vb::LineInput(4), 62);
    EXPECT_TRUE(vb::FileEOF(4));
    EXPECT_VB_ERROR(vb::FileOpen(4, file, FileMode::Input), 55);
    vb::FileClose(4);
    vb::FileOpen(4, file, FileMode::Input);
    EXPECT_EQ(vb::LineInput(4), "only");
}

TEST_F(FileChannelsTest, AnEmptyFileIsAtItsEndAtOnce) {
    vb::FileOpen(1, write("empty.txt", ""), FileMode::Input);
    EXPECT_TRUE(vb::FileEOF(1));
    EXPECT_VB_ERROR(vb::LineInput(1), 62);
}

TEST_F(FileChannelsTest, AChannelOpenedTwiceRaises55AndKeepsItsFile) {
    vb::FileOpen(3, write("first.txt", "first\n"), FileMode::Input);
    EXPECT_VB_ERROR(vb::FileOpen(3, write("second.txt", "second\n"), FileMode::Input), 55);
    EXPECT_VB_ERROR(vb::FileOpen(3, path("out.txt"), FileMode::Output), 55);
    EXPECT_EQ(vb::LineInput(3), "first");
}

TEST_F(FileChannelsTest, OpeningFailuresCarryTheOldNumbers) {
    EXPECT_VB_ERROR(vb::FileOpen(1, path("missing.txt"), FileMode::Input), 53);
    EXPECT_VB_ERROR(vb::FileOpen(1, path("no-folder/out.txt"), FileMode::Output), 76);
    EXPECT_VB_ERROR(vb::FileOpen(1, dir_.string(), FileMode::Input), 75);
    EXPECT_VB_ERROR(vb::FileOpen(0, path("x.txt"), FileMode::Output), 52);
    EXPECT_VB_ERROR(vb::FileOpen(512, path("x.txt"), FileMode::Output), 52);
    EXPECT_EQ(vb::FreeFile(), 1) << "a failed open leaves the channel free";
}

TEST_F(FileChannelsTest, ChannelsRefuseTheWrongDirectionAndClosedNumbers) {
    vb::FileOpen(1, write("in.txt", "x\n"), FileMode::Input);
    vb::FileOpen(2, path("out.txt"), FileMode::Output);
    EXPECT_VB_ERROR(vb::PrintLine(1, "y"), 54);
    EXPECT_VB_ERROR(vb::LineInput(2), 54);
    EXPECT_VB_ERROR(vb::FileEOF(2), 54);
    EXPECT_VB_ERROR(vb::LineInput(9), 52);
    EXPECT_VB_ERROR(vb::PrintLine(9, "y"), 52);
    EXPECT_VB_ERROR(vb::FileEOF(9), 52);
    vb::FileClose(9);
}

TEST_F(FileChannelsTest, FreeFileGivesTheLowestFreeNumber) {
    EXPECT_EQ(vb::FreeFile(), 1);
    vb::FileOpen(1, path("a.txt"), FileMode::Output);
    vb::FileOpen(3, path("b.txt"), FileMode::Output);
    EXPECT_EQ(vb::FreeFile(), 2);
    vb::FileCloseAll();
    EXPECT_EQ(vb::FreeFile(), 1);
}

TEST_F(FileChannelsTest, TextIsWrittenAndReadAsBytes) {
    vb::FileOpen(1, path("utf8.txt"), FileMode::Output);
    vb::PrintLine(1, "Größe\x0e");
    vb::FileClose(1);
    vb::FileOpen(1, path("utf8.txt"), FileMode::Input);
    EXPECT_EQ(vb::LineInput(1), "Größe\x0e");
}

} // namespace

namespace {

/// A device that takes the bytes only when flushed, and may refuse them.
class DeviceBuffer : public std::stringbuf {
public:
    DeviceBuffer(std::string &sent, bool refuse) : sent_(sent), refuse_(refuse) {}

protected:
    int sync() override {
        if (refuse_) {
            return -1;
        }
        sent_ += str();
        return 0;
    }

private:
    std::string &sent_;
    bool refuse_;
};

class Device : public std::ostream {
public:
    Device(std::string &sent, bool refuse) : std::ostream(nullptr), buffer_(sent, refuse) {
        rdbuf(&buffer_);
    }

private:
    DeviceBuffer buffer_;
};

TEST(FileChannelsDeviceTest, ADeviceGetsTheLinesWhenTheChannelCloses) {
    std::string sent;
    vb::FileOpenDevice(7, "LPT1", std::make_unique<Device>(sent, false));
    vb::PrintLine(7, "slip");
    EXPECT_EQ(sent, "") << "nothing leaves before the close";
    EXPECT_THROW(vb::FileOpenDevice(7, "LPT1", std::make_unique<Device>(sent, false)), vb::Error);
    vb::FileClose(7);
    EXPECT_EQ(sent, "slip\r\n");
}

TEST(FileChannelsDeviceTest, ADeviceThatRefusesFailsTheClose) {
    std::string sent;
    vb::FileOpenDevice(7, "LPT1", std::make_unique<Device>(sent, true));
    vb::PrintLine(7, "slip");
    try {
        vb::FileClose(7);
        ADD_FAILURE() << "the close must fail";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 57);
    }
    EXPECT_NO_THROW(vb::FileOpenDevice(7, "LPT1", std::make_unique<Device>(sent, false)))
        << "the channel is free again";
    vb::FileClose(7);
}

} // namespace
