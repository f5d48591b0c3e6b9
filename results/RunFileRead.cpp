#include "foundation/PlainText.h"
#include "results/RunFields.h"
#include "results/RunFile.h"
#include "results/WholeText.h"

#include <algorithm>
#include <concepts>
#include <map>
#include <nlohmann/json.hpp>
#include <ranges>
#include <set>
#include <type_traits>
#include <utility>

namespace {

using Json = nlohmann::ordered_json; // its objects are the smaller ones

// Lists and objects of the format lie 6 deep. The rest is for keys of later versions, which are
// passed over.
constexpr size_t kDeepest = 16;

// Where, and why it cannot be: "series[3].spans[0].seconds", "must be ...".
struct BadField {
    std::string where;
    std::string why;
};

struct NotJson {
    size_t at; // bytes that were read till then
};

void Check(bool isRight, const char* why)
{
    if (!isRight)
        throw BadField { "", why };
}

// What read throws lies within this part of the text.
template <class Part, class Read>
void Within(Part part, const Read& read) // a key, or an index
{
    try {
        read();
    } catch (BadField& bad) {
        std::string where;
        if constexpr (std::is_integral_v<Part>)
            where = '[' + std::to_string(part) + ']';
        else
            where = part;
        const bool isInner = !bad.where.empty() && bad.where.front() != '[';
        bad.where = where + (isInner ? "." : "") + bad.where;
        throw;
    }
}

template <class T>
concept List = std::ranges::range<T>;
template <class T>
concept Structure = std::is_class_v<T> && !List<T>;

struct Reader {
    static constexpr bool kReads = true;
    using Limits = runfile::Limits;

    template <class T>
    void Field(const char* key, T& field, Limits limits = {})
    {
        Within(key, [&] { Take(At(key), field, limits); });
    }

    template <class T>
    void FieldOr(const char* key, T& field, std::type_identity_t<T> unknown, Limits limits = {})
    {
        std::optional<T> known;
        if (json.contains(key))
            Field(key, known, limits);
        field = known.value_or(unknown);
    }

private:
    const Json& At(const char* key) const
    {
        const auto found = json.find(key);
        Check(found != json.end(), "is missing");
        return *found;
    }

    // Every field is empty before.
    static void Take(const Json& from, bool& field, Limits)
    {
        Check(from.is_boolean(), "must be true or false");
        field = from.get<bool>();
    }

    static void Take(const Json& from, double& field, Limits limits)
    {
        const bool isInside = from.is_number() && from.get<double>() >= limits.lowest
            && from.get<double>() <= limits.highest;
        if (!isInside) {
            throw BadField { "",
                "must be a number from " + LibShortestText(limits.lowest) + " to "
                    + LibShortestText(limits.highest) };
        }
        field = from.get<double>();
    }

    template <std::integral T>
    static void Take(const Json& from, T& field, Limits limits)
    {
        const T lowest = static_cast<T>(limits.lowest);
        // Half of what the type holds, so that the sum of two such numbers still fits.
        constexpr T kHighest = std::numeric_limits<T>::max() / 2;
        const T highest = static_cast<T>(std::min(limits.highest, static_cast<double>(kHighest)));
        // The library keeps what is not below 0 as unsigned. Turned into a signed number before it
        // is compared, the greatest would be negative.
        const bool isInside = from.is_number_unsigned()
            ? std::cmp_less_equal(from.get<uint64>(), highest)
                && std::cmp_greater_equal(from.get<uint64>(), lowest)
            : from.is_number_integer() && std::cmp_less_equal(from.get<int64>(), highest)
                && std::cmp_greater_equal(from.get<int64>(), lowest);
        if (!isInside) {
            throw BadField { "",
                "must be a whole number from " + std::to_string(lowest) + " to "
                    + std::to_string(highest) };
        }
        field = from.get<T>();
    }

    static void Take(const Json& from, std::string& field, Limits)
    {
        if (from.is_null())
            return;
        Check(from.is_string(), "must be a text or null");
        field = from.get<std::string>();
        // It would end the text early wherever that goes on as a C text.
        Check(field.find('\0') == std::string::npos, "must not hold a NUL");
    }

    static void Take(const Json& from, const TestType*& field, Limits)
    {
        int32 id;
        Take(from, id, {});
        // Null for a test of a later version: CheckSeries() leaves it out.
        field = FindTestType(id);
    }

    static void Take(const Json& from, CoreKind& field, Limits)
    {
        Check(from == "performance" || from == "efficiency",
            "must be \"performance\", \"efficiency\" or null");
        field = from == "performance" ? CoreKind::kPerformance : CoreKind::kEfficiency;
    }

    template <class T>
    static void Take(const Json& from, std::optional<T>& field, Limits limits)
    {
        if (from.is_null())
            return;
        T known {};
        Take(from, known, limits);
        field = std::move(known);
    }

    template <List T>
    static void Take(const Json& from, T& field, Limits limits)
    {
        Check(from.is_array(), "must be a list");
        for (size_t i = 0; i < from.size(); i++) {
            Within(i, [&] { Take(from[i], field.emplace_back(), limits); });
        }
    }

    template <Structure T>
    static void Take(const Json& from, T& field, Limits)
    {
        Check(from.is_object(), "must be an object");
        Reader reader { from };
        runfile::Fields(reader, field);
    }

public:
    const Json& json;
};

// The keys that are read, each with those within it. All others are passed over as they are parsed:
// what is worked out of the fields is most of a file.
struct Shape {
    static constexpr bool kReads = true;

    template <class T>
    static Shape Of()
    {
        Shape shape;
        T none {};
        runfile::Fields(shape, none);
        return shape;
    }

    template <class T>
    void Field(const char* key, T&, runfile::Limits = {})
    {
        keys.emplace(key, Below(std::type_identity<T>()));
    }

    template <class T>
    void FieldOr(const char* key, T& field, std::type_identity_t<T>, runfile::Limits = {})
    {
        Field(key, field);
    }

    std::map<std::string, Shape, std::less<>> keys;

private:
    template <class T>
    static Shape Below(std::type_identity<T>)
    {
        if constexpr (Structure<T>)
            return Of<T>();
        else
            return {};
    }

    template <List T>
    static Shape Below(std::type_identity<T>)
    {
        return Below(std::type_identity<typename T::value_type>());
    }

    template <class T>
    static Shape Below(std::type_identity<std::optional<T>>)
    {
        return Below(std::type_identity<T>());
    }
};

// Keeps of a text what its shape names. All are called by the library's parser, in the text's
// order.
class Builder : public nlohmann::json_sax<Json> {
public:
    explicit Builder(const Shape& shape) { fOpen.push_back({ &fRoot, &shape }); }

    Json&& Take() { return std::move(fRoot); }

    bool null() override { return Add(nullptr); }
    bool boolean(bool value) override { return Add(value); }
    bool number_integer(int64 value) override { return Add(value); }
    bool number_unsigned(uint64 value) override { return Add(value); }
    bool number_float(double value, const std::string&) override { return Add(value); }
    bool string(std::string& value) override { return Add(std::move(value)); }
    bool binary(Json::binary_t&) override { return false; } // JSON has none
    bool start_object(size_t) override { return Open(Json::object()); }
    bool end_object() override { return Close(); }
    bool start_array(size_t) override { return Open(Json::array()); }
    bool end_array() override { return Close(); }

    bool key(std::string& name) override
    {
        if (fPassedOver > 0)
            return true;
        const auto& [object, shape] = fOpen.back();
        const auto found = shape->keys.find(name);
        fIsWanted = found != shape->keys.end();
        if (!fIsWanted)
            return true;
        // Of a key that is there twice the library would keep one and say nothing.
        const auto [place, isNew] = object->emplace(std::move(name), nullptr);
        Check(isNew, "has a key twice");
        fValue = { &*place, &found->second };
        return true;
    }

    bool parse_error(size_t at, const std::string&, const Json::exception& error) override
    {
        constexpr int kNumberTooLarge = 406;
        if (error.id == kNumberTooLarge)
            Check(false, "has a number that is too large");
        throw NotJson { at };
    }

private:
    struct Place {
        Json* json;
        const Shape* shape; // of what is in it, also of what is in a list
    };

    // Where the next value goes; nothing where it is passed over.
    Json* Next(Place& place)
    {
        place = fOpen.back();
        if (fOpen.size() == 1 || !place.json->is_object()) {
            if (fOpen.size() > 1)
                place.json = &place.json->emplace_back();
            return place.json;
        }
        if (!fIsWanted)
            return nullptr;
        place = fValue;
        return place.json;
    }

    template <class Value>
    bool Add(Value&& value)
    {
        Place place;
        if (Json* json = fPassedOver > 0 ? nullptr : Next(place))
            *json = std::forward<Value>(value);
        return true;
    }

    bool Open(Json&& container)
    {
        Check(fOpen.size() - 1 + fPassedOver <= kDeepest, "is nested too deeply");
        Place place;
        Json* json = fPassedOver > 0 ? nullptr : Next(place);
        if (!json) {
            fPassedOver++;
            return true;
        }
        *json = std::move(container);
        fOpen.push_back(place);
        return true;
    }

    bool Close()
    {
        if (fPassedOver > 0)
            fPassedOver--;
        else
            fOpen.pop_back();
        return true;
    }

    Json fRoot;
    std::vector<Place> fOpen; // the root, and the lists and objects around the next value
    Place fValue {}; // of the key that was read last
    bool fIsWanted = true; // that key
    size_t fPassedOver = 0; // lists and objects around the next value that nobody reads
};

// Throws BadField or NotJson.
Json Parse(const std::string& text, const Shape& shape)
{
    Check(text.size() <= kMostBytes, "has over 32 megabytes");
    Builder builder(shape);
    Json::sax_parse(text, &builder);
    return builder.Take();
}

Shape RunShape()
{
    Shape shape = Shape::Of<RunRecord>();
    shape.keys["schema"];
    return shape;
}

void CheckSchema(const Json& json)
{
    int32 schema = 0;
    Check(json.is_object(), "is not a run of tarvex-run");
    Reader { json }.Field("schema", schema, { 1, 1e9 });
    if (schema != kRunSchema) {
        throw BadField { "",
            "is of a newer Tarvex: its schema is " + std::to_string(schema) + ", this one reads "
                + std::to_string(kRunSchema) };
    }
}

void CheckSeries(std::deque<Series>& series)
{
    std::set<std::pair<const TestType*, int32>> seen;
    std::erase_if(series, [](const Series& each) { return !each.test; });
    for (const Series& each : series) {
        if (!seen.emplace(each.test, each.processors).second)
            throw BadField { "series",
                std::string("has <") + each.test->name + "> twice at the same count" };
    }
}

} // namespace

bool AddSpan(const std::string& line, RunRecord& record)
{
    try {
        static const Shape kShape = Shape::Of<Series>();
        const Json json = Parse(line, kShape);
        Check(json.is_object(), "is no span");
        Series added;
        Reader reader { json };
        runfile::Fields(reader, added);
        if (!added.test)
            return false;
        Series& series = record.At(*added.test, added.processors);
        series.undone = added.undone;
        for (const Span& span : added.spans)
            series.spans.push_back(span);
        return true;
    } catch (const BadField&) {
        return false;
    } catch (const NotJson&) {
        return false;
    }
}

std::variant<RunRecord, std::string> RunFromJson(const std::string& text)
{
    try {
        static const Shape kShape = RunShape();
        const Json json = Parse(text, kShape);
        // Before the fields: of a newer file the first one that has changed would be called wrong.
        CheckSchema(json);
        RunRecord record;
        Reader reader { json };
        runfile::Fields(reader, record);
        CheckSeries(record.series);
        return record;
    } catch (const BadField& bad) {
        return bad.where.empty() ? bad.why : bad.where + ": " + bad.why;
    } catch (const NotJson& bad) {
        const size_t read = std::min(bad.at, text.size());
        return "is not JSON in line "
            + std::to_string(1 + std::count(text.begin(), text.begin() + read, '\n'));
    }
}
