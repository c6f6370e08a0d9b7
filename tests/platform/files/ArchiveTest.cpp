#include "platform/files/Archive.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace velmor;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(const CArchiveWriter& writer) {
    return {writer.Bytes().begin(), writer.Bytes().end()};
}

} // namespace

TEST(Archive, ValuesAreLittleEndianAndUnpadded) {
    CArchiveWriter writer;
    writer.WriteByte(7);
    writer.WriteInt(-2);
    writer.WriteDouble(1.5);
    writer.WriteString("\u00E9!");
    EXPECT_EQ(BytesOf(writer), (Bytes{7, 0xFE, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F, 2, 0xE9, '!'}));
}

TEST(Archive, CountedStringsAtEachEdgeOfTheLengthForms) {
    struct CCase {
        std::size_t length;
        Bytes head;
    };
    const CCase cases[] = {{0, {0}},
                           {1, {1}},
                           {254, {254}},
                           {255, {255, 255, 0}},
                           {65533, {255, 0xFD, 0xFF}},
                           {65534, {255, 0xFF, 0xFF, 0xFE, 0xFF, 0, 0}},
                           {65535, {255, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0}},
                           {70000, {255, 0xFF, 0xFF, 0x70, 0x11, 1, 0}}};
    for (const CCase& one : cases) {
        const std::string text(one.length, 'v');
        CArchiveWriter writer;
        writer.WriteString(text);
        writer.WriteByte(42);
        Bytes expected = one.head;
        expected.insert(expected.end(), one.length, 'v');
        expected.push_back(42);
        EXPECT_EQ(BytesOf(writer), expected) << one.length;

        CArchiveReader reader(writer.Bytes());
        EXPECT_EQ(reader.ReadString(), text);
        EXPECT_EQ(reader.ReadByte(), 42);
        EXPECT_EQ(reader.Remaining(), 0U);
        EXPECT_FALSE(reader.Failed());
    }
}

TEST(Archive, AnArchiveCutAnywhereFailsForGood) {
    CArchiveWriter writer;
    writer.WriteString("name");
    writer.WriteInt(std::numeric_limits<std::int32_t>::min());
    writer.WriteString(std::string(300, 'x'));
    writer.WriteDouble(-0.25);
    for (std::size_t length = 0; length <= writer.Bytes().size(); ++length) {
        CArchiveReader reader(writer.Bytes().first(length));
        reader.ReadString();
        reader.ReadInt();
        const std::string second = reader.ReadString();
        EXPECT_TRUE(second.empty() || second.size() == 300) << length;
        const double last = reader.ReadDouble();
        const bool whole = length == writer.Bytes().size();
        EXPECT_EQ(reader.Failed(), !whole) << length;
        EXPECT_EQ(last, whole ? -0.25 : 0.0) << length;
        EXPECT_LE(reader.Remaining(), length);
    }
}

TEST(Archive, ALengthBeyondTheBytesTakesNothing) {
    const Bytes bytes = {255, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 'a', 'b'};
    CArchiveReader reader(bytes);
    EXPECT_EQ(reader.ReadString(), "");
    EXPECT_TRUE(reader.Failed());
    EXPECT_EQ(reader.ReadByte(), 0) << "bytes that are there must not be read after a failure";
}
