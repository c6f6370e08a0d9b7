#include "app/cli/JsonWriter.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>

using namespace velmor;
using nlohmann::ordered_json;

namespace {

std::string DumpOf(const ordered_json& value) {
    return value.dump(2, ' ', false, ordered_json::error_handler_t::replace);
}

template<class T>
std::string Written(const std::vector<T>& values) {
    std::ostringstream out;
    {
        CJsonWriter json(out);
        json.BeginArray();
        for (const T& value : values)
            json.Write(value);
        json.EndArray();
    }
    return out.str();
}

std::vector<double> Numbers() {
    std::vector<double> numbers = {
        0.0,  -0.0,   1,       -1,      0.1,        1e14,  999999999999999.0,  1e15, -1e15, 1e16, 1e22, 1e-4,
        1e-5, 5e-324, 1.0 / 3, 2.5e300, 123456.789, -77.0, 0.30000000000000004};
    numbers.push_back(std::numeric_limits<double>::infinity());
    numbers.push_back(std::nan(""));
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i)
        numbers.push_back(std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())),
                                     static_cast<int>(random() % 100) - 90));
    return numbers;
}

} // namespace

TEST(JsonWriter, NumbersAndTextsAreWrittenAsTheLibraryWritesThem) {
    EXPECT_EQ(Written(Numbers()), DumpOf(ordered_json(Numbers())));
    const std::vector<std::string> texts = {
        "",         "walk",     "a\"b\\c/d",           "\x01\t\n\x7f", "Gr\xc3\xbc\xc3\x9f",
        "cut \xc3", "\xff\xfe", std::string("a\0b", 3)};
    EXPECT_EQ(Written(texts), DumpOf(ordered_json(texts)));
    EXPECT_EQ(Written(std::vector<int>{}), "[]");
}

TEST(JsonWriter, NestsAndSeparatesAsTheLibraryDoes) {
    std::ostringstream out;
    {
        CJsonWriter json(out);
        json.BeginObject();
        json.Write("first", 1);
        json.Key("none").BeginArray();
        json.EndArray();
        json.Key("bare").BeginObject();
        json.EndObject();
        json.Key("list").BeginArray();
        for (int i = 0; i < 2; ++i) {
            json.BeginObject();
            json.Write("number", i * 0.5);
            json.Write("name", std::string("x"));
            json.EndObject();
        }
        json.Write(-3);
        json.EndArray();
        json.EndObject();
    }
    const ordered_json same = {{"first", 1},
                               {"none", ordered_json::array()},
                               {"bare", ordered_json::object()},
                               {"list", {{{"number", 0.0}, {"name", "x"}}, {{"number", 0.5}, {"name", "x"}}, -3}}};
    EXPECT_EQ(out.str(), DumpOf(same));
}
