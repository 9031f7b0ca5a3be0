// Names, objects and user infos from one host process to another.
#include <limits>

#include "tests/notifications/process_test.h"

namespace {

using ProcessValues = ProcessTest;

std::string EveryByte()
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

/// Values that arrive unchanged.
std::vector<Json> Values()
{
    using namespace typed;
    using Limits = std::numeric_limits<int64_t>;
    constexpr int64_t kBeyondDoubles = (int64_t{1} << 53) + 1;
    const std::vector<Json> scalars = {
        String(""),
        String("plain"),
        String("Gr\u00FC\u00DFe, \u4E2D\u6587, \u05E9\u05DC\u05D5\u05DD"),
        String("beyond the BMP: \U0001F389\U00010348"),
        String("e\u0301 is not \u00E9"),
        String("line\r\nline\ttab \"quoted\" \\ <&>"),
        String(std::string(100000, 'x')),
        Integer(0),
        Integer(1),
        Integer(-1),
        Integer(127),
        Integer(128),
        Integer(-129),
        Integer(std::numeric_limits<int32_t>::max()),
        Integer(std::numeric_limits<int32_t>::min()),
        Integer(int64_t{1} << 32),
        Integer(kBeyondDoubles),
        Integer(-kBeyondDoubles),
        Integer(Limits::max()),
        Integer(Limits::min()),
        Double(0.0),
        Double(-0.0),
        Double(1.0),
        Double(0.1),
        Double(-1e300),
        Double(std::numeric_limits<double>::denorm_min()),
        Double(std::numeric_limits<double>::max()),
        Double(std::numeric_limits<double>::infinity()),
        Double(static_cast<double>(int64_t{1} << 53)),
        Single(0.1f),
        Single(std::numeric_limits<float>::max()),
        Boolean(true),
        Boolean(false),
        Date("1904-01-01 00:00:00"),
        Date("1969-12-31 23:59:59"),
        Date("2024-02-29 14:05:09"),
        Date("2100-12-31 23:59:59"),
        Memory(std::string_view("\0", 1)),
        Memory(EveryByte()),
        Memory(std::string(1000000, '\xA5')),
    };
    std::map<std::string, Json> entries = {{"", Integer(1)}, {"\U0001F511 key", Boolean(true)}};
    for (const Json &scalar : scalars)
        entries["entry " + std::to_string(entries.size())] = scalar;
    std::vector<Json> values = scalars;
    for (const Json &collection : {
             Array({}),
             Array(scalars),
             Array({Array({}), Array({Array({Boolean(false), Integer(0), Double(0)})}), Dictionary({})}),
             Dictionary({}),
             Dictionary(entries),
             Dictionary({{"a", Dictionary({{"b", Dictionary({{"c", Array({Dictionary({})})}})}})}}),
         })
        values.push_back(collection);
    return values;
}

/// Posts each value from one to the other and compares.
void ExpectToArrive(Peer &poster, Peer &observer)
{
    observer.Do(ObserveName("Value"));
    for (const Json &value : Values()) {
        const Json info = typed::Dictionary({{"value", value}});
        Json command = PostName("Value");
        command["info"] = info;
        poster.Do(command);
        const Json received = observer.Events(1).at(0);
        const bool arrived = received.at("info") == info;
        EXPECT_TRUE(arrived) << value.dump().substr(0, 1000) << "\narrives in\n"
                             << received.dump().substr(0, 1000);
    }
}

/// Texts for names and objects, and what the observing program reads.
const struct {
    std::string sent;
    std::string read;
} kTexts[] = {
    {"plain", "plain"},
    {"Gr\u00FC\u00DFe \u4E2D\u6587", "Gr\u00FC\u00DFe \u4E2D\u6587"},
    {"\U0001F389\U00010348", "\U0001F389\U00010348"},
    {"com.example.a-long.name." + std::string(5000, 'n'),
     "com.example.a-long.name." + std::string(5000, 'n')},
    // The host reads a Cocoa string up to its first NUL.
    {std::string("before\0after", 12), "before"},
};

} // namespace

TEST_F(ProcessValues, EveryPropertyListTypeArrivesAsItWasSent)
{
    Peer &poster = StartPeer("poster");
    Peer &observer = StartPeer("observer");
    ExpectToArrive(poster, observer);
}

TEST_F(ProcessValues, TheyArriveInTheOtherDirectionToo)
{
    Peer &observer = StartPeer("observer");
    Peer &poster = StartPeer("poster");
    // Both observe and both post.
    poster.Do(ObserveName("Elsewhere"));
    observer.Do(PostName("Elsewhere"));
    EXPECT_EQ(poster.Events(1).at(0).at("name"), "Elsewhere");
    ExpectToArrive(poster, observer);
}

TEST_F(ProcessValues, EmptyMemoryBlockArrivesAsNil)
{
    Peer &poster = StartPeer("poster");
    Peer &observer = StartPeer("observer");
    observer.Do(ObserveName("Value"));
    Json command = PostName("Value");
    command["info"] = typed::Dictionary({{"value", typed::Memory("")}});
    poster.Do(command);
    EXPECT_EQ(observer.Events(1).at(0).at("info"), typed::Dictionary({{"value", nullptr}}));
}

TEST_F(ProcessValues, TextsArriveAsNamesAndObjects)
{
    Peer &poster = StartPeer("poster");
    Peer &observer = StartPeer("observer");
    for (const auto &[sent, read] : kTexts) {
        observer.Do({{"do", "observe"}, {"observer", "a"}, {"name", sent}, {"object", typed::String(sent)}});
        poster.Do(PostName(sent, sent));
        const Json event = observer.Events(1).at(0);
        EXPECT_EQ(event.at("name"), read);
        EXPECT_EQ(event.at("object"), typed::String(read));
    }
}

TEST_F(ProcessValues, NamesAreComparedBeyondANul)
{
    Peer &poster = StartPeer("poster");
    Peer &observer = StartPeer("observer");
    observer.Do(ObserveName(std::string("name\0one", 8)));
    poster.Do(PostName(std::string("name\0two", 8), "not observed"));
    poster.Do(PostName(std::string("name\0one", 8), "observed"));
    Settle(poster, observer);
    EXPECT_EQ(Each("object", observer.RemainingEvents()), std::vector<Json>{typed::String("observed")});
}
