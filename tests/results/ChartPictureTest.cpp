// The pictures in files, written where there is no display.
#include "results/ChartPicture.h"

#include "results/ScalingPicture.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Test.h"

#include <QImage>
#include <QXmlStreamReader>

namespace {

// The texts of an SVG, the widths of its bars by their colours, and the lines of some colour that
// are not upright, each by the height of its right end above its left one.
struct Svg {
    std::vector<std::string> texts;
    std::map<std::string, std::vector<double>> bars;
    std::map<std::string, std::vector<double>> rises;
    std::string error; // of the XML

    explicit Svg(const std::string& path)
    {
        const std::string file = ReadFile(path);
        QXmlStreamReader reader(QByteArray::fromStdString(file));
        std::string color;
        std::string pen;
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement)
                continue;
            const auto value = [&reader](const char* name) {
                return reader.attributes().value(QLatin1String(name)).toString();
            };
            if (reader.name() == QLatin1String("g")) {
                color = value("fill").toStdString();
                pen = value("stroke").toStdString();
            } else if (reader.name() == QLatin1String("polyline")) {
                const QStringList points = value("points").split(' ', Qt::SkipEmptyParts);
                const auto y = [&](qsizetype i) { return points[i].split(',')[1].toDouble(); };
                if (points.size() == 2 && y(0) != y(1))
                    rises[pen].push_back(y(0) - y(1));
            }
            if (reader.name() == QLatin1String("rect") && value("height") == "11")
                bars[color].push_back(value("width").toDouble());
            else if (reader.name() == QLatin1String("text"))
                texts.push_back(reader.readElementText().toStdString());
        }
        error = reader.errorString().toStdString();
    }
    long Count(const std::string& text) const
    {
        return std::count(texts.begin(), texts.end(), text);
    }
};

class ChartPictureTest : public testing::Test {
protected:
    void SetUp() override
    {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        WriteFile(folder / "machines",
            "1.0\n29\nOne <A&B>\x01 (2-x)\t700:400/1,4;\n"
            "24\nOther (1-y)\t700:200/1.0;\n");
        ASSERT_TRUE(comparison.Load({ (folder / "machines").c_str() }).isRead);
        comparison.ChooseTest("Sieve");
    }
    // What is said on standard error.
    std::string Said(const std::string& path)
    {
        testing::internal::CaptureStderr();
        const bool isWritten = WriteChartPicture(path.c_str(), comparison);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(isWritten, said.empty());
        return said;
    }

    const TempFolder folder;
    Comparison comparison;
};

MeasuredMachine Machine(const char* name, const std::map<int32, double>& seconds)
{
    MeasuredMachine machine { MadeRun("PC (8-x)"), name, name, "", name };
    for (const auto& [processors, time] : seconds)
        AddTimes(machine.record, TestNamed("Sieve"), processors, time, 1000);
    return machine;
}

bool IsSieve(const TestType& test)
{
    return test.id == 700;
}

} // namespace

TEST_F(ChartPictureTest, SvgHasTheTextsAsTextAndBarsInProportion)
{
    EXPECT_EQ(Said(folder / "a.SVG"), "");
    Svg svg(folder / "a.SVG");
    EXPECT_EQ(svg.error, "");
    for (const char* text : { "Sieve", "1 CPU", "8 CPU", "( IPS )", "10",
             "One <A&B>\xef\xbf\xbd (2-x)", "Other (1-y)" })
        EXPECT_EQ(svg.Count(text), 1) << text;
    for (const std::string& text : svg.texts) // that is for screen readers
        EXPECT_EQ(text.find(".0"), std::string::npos) << text;
    ASSERT_EQ(svg.bars["#00b200"].size(), 1u);
    ASSERT_EQ(svg.bars["#0000c8"].size(), 2u);
    const double widest = svg.bars["#00b200"][0];
    EXPECT_GT(widest, 300);
    EXPECT_NEAR(svg.bars["#0000c8"][0], widest / 4, 0.01);
    EXPECT_NEAR(svg.bars["#0000c8"][1], widest / 2, 0.01);

    comparison.selected = comparison.machines.First();
    comparison.byRatio = true;
    comparison.UpdateScale();
    EXPECT_EQ(Said(folder / "a.SVG"), "");
    svg = Svg(folder / "a.SVG");
    EXPECT_EQ(svg.Count("Sieve, percent of One <A&B>\xef\xbf\xbd (2-x)"), 1);
    EXPECT_EQ(svg.Count("( Percent )"), 1);
}

TEST_F(ChartPictureTest, PngIsSharpAndLight)
{
    EXPECT_EQ(Said(folder / "a.png"), "");
    const QImage image(QString::fromStdString(folder / "a.png"));
    constexpr int kScale = 2;
    constexpr int kTop = 56; // of the chart
    ASSERT_EQ(image.size(), kScale * QSize(720, kTop + 19 + 2 * 17));
    const auto at = [&image](int x, int y) { return image.pixelColor(kScale * x, kScale * y); };
    EXPECT_EQ(at(0, 0), QColor(Qt::white));
    EXPECT_EQ(at(719, kTop + 40), QColor(Qt::white));
    EXPECT_EQ(at(330, kTop + 19 + 8), QColor(0, 0, 200));
    EXPECT_EQ(at(500, kTop + 19 + 8), QColor(0, 178, 0));
    EXPECT_EQ(at(500, kTop + 19 + 17 + 1), QColor(Qt::white)); // between two bars
}

TEST_F(ChartPictureTest, ShowsMeasuredMachinesByTheCountsThatTheyHave)
{
    std::vector<MeasuredMachine> machines = { Machine("few", { { 8, 1 }, { 4, 2 }, { 1, 4 } }),
        Machine("none", {}), Machine("two", { { 2, 2 } }) };
    const auto drawn = [&] {
        EXPECT_EQ(
            WriteMachinesChart((folder / "b.svg").c_str(), machines, 0, TestNamed("Sieve")), "");
        return Svg(folder / "b.svg");
    };
    Svg svg = drawn();
    EXPECT_EQ(svg.Count("few") + svg.Count("two"), 2);
    EXPECT_EQ(svg.Count("none"), 0);
    ASSERT_EQ(svg.bars["#00ff00"].size(), 1u); // 8 processors
    ASSERT_EQ(svg.bars["#33cb98"].size(), 1u); // 4
    EXPECT_NEAR(svg.bars["#33cb98"][0], svg.bars["#00ff00"][0] / 2, 0.1);
    EXPECT_EQ(svg.bars["#00b200"].size(), 1u); // 2
    EXPECT_EQ(svg.Count("7 CPU"), 1);

    for (MeasuredMachine& machine : machines)
        AddTimes(machine.record, TestNamed("Ten Threaded Whetstones"), 1, 0.02, 0);
    EXPECT_EQ(WriteMachinesChart(
                  (folder / "d.svg").c_str(), machines, 0, TestNamed("Ten Threaded Whetstones")),
        "");
    svg = Svg(folder / "d.svg");
    EXPECT_EQ(svg.Count("( milliseconds )") + svg.Count("20"), 2);

    machines.push_back(Machine("many", { { 16, 1 }, { 2, 2 } }));
    svg = drawn();
    for (const char* name : { "1 CPU", "2 CPU", "4 CPU", "8 CPU", "16 CPU" })
        EXPECT_EQ(svg.Count(name), 1) << name;
    EXPECT_EQ(svg.Count("7 CPU"), 0);
    EXPECT_EQ(svg.bars["#66cbff"].size(), 1u); // the greatest of five

    machines.push_back(Machine("more", { { 10, 1 }, { 11, 1 }, { 12, 1 }, { 13, 1 } }));
    svg = drawn();
    EXPECT_EQ(svg.Count("of 9 processor counts the least and the seven greatest"), 1);
    EXPECT_EQ(svg.Count("1 CPU") - svg.Count("2 CPU"), 1);
}

TEST(Scaling, IsTheSpeedOverThatOfTheFewestProcessors)
{
    std::vector<MeasuredMachine> machines = { Machine("ideal", { { 1, 4 }, { 2, 2 }, { 4, 1 } }),
        Machine("single", { { 4, 1 } }), Machine("large", { { 16, 1 }, { 8, 1.5 } }),
        Machine("undone", { { 1, 4 }, { 2, 2 } }),
        Machine("damaged", { { 4, 1e-300 }, { 2, 1 }, { 1, 1 } }) };
    machines[3].record.series[0].undone = "a flag is wrong";
    // A test of a fixed duration does more work instead.
    for (Span& span : machines[0].record.series[2].spans)
        span = { 8 * span.seconds, 8 * span.work, {}, {}, 0, false, {} };
    AddTimes(machines[2].record, TestNamed("Memory"), 16, 1, 1);
    const auto tests = ScalingOf(machines, [](const TestType&) { return true; });
    ASSERT_EQ(tests.size(), 1u);
    ASSERT_EQ(tests[0].curves.size(), 2u);
    const auto& ideal = tests[0].curves[0].points;
    ASSERT_EQ(ideal.size(), 3u);
    for (const ScalingPoint& point : ideal) {
        EXPECT_NEAR(point.speedUp, point.processors, 1e-9);
        EXPECT_NEAR(point.Efficiency(), 1, 1e-9);
        EXPECT_FALSE(point.isDoubtful);
    }
    EXPECT_EQ(tests[0].curves[1].machine, 2u);
    const auto& large = tests[0].curves[1].points;
    ASSERT_EQ(large.size(), 2u);
    EXPECT_EQ(large[0].processors, 8);
    EXPECT_NEAR(large[0].speedUp, 8, 1e-9);
    EXPECT_NEAR(large[1].speedUp, 12, 1e-9);
    EXPECT_NEAR(large[1].Efficiency(), 0.75, 1e-9);
}

TEST_F(ChartPictureTest, ScalingRisesInProportionBesideTheIdealLine)
{
    std::vector<MeasuredMachine> machines = { Machine("half", { { 1, 4 }, { 5, 4.0 / 3 } }) };
    machines[0].record.series[1].spans[3].waited = 1; // one of ten: the clean ones do
    const auto write = [&] {
        EXPECT_EQ(
            WriteScalingPicture((folder / "c.svg").c_str(), machines, ScalingOf(machines, IsSieve)),
            "");
        return Svg(folder / "c.svg");
    };
    Svg svg = write();
    for (const char* text : { "Sieve", "half", "ideal", "Speed-up", "Efficiency (percent)" })
        EXPECT_EQ(svg.Count(text), 1) << text;
    EXPECT_EQ(svg.Count("hollow: shared, two speeds or unsteady"), 0);
    ASSERT_EQ(svg.rises["#a0a0a0"].size(), 1u); // that of efficiency is level
    ASSERT_EQ(svg.rises["#0072b2"].size(), 2u);
    EXPECT_NEAR(svg.rises["#0072b2"][0], svg.rises["#a0a0a0"][0] / 2, 0.5); // up by 2 of 4
    EXPECT_LT(svg.rises["#0072b2"][1], 0); // from 100 to 60 percent

    for (int i = 0; i < 24; i++)
        machines.push_back(Machine("another", { { 1, 1 }, { 2, 1 } }));
    for (Span& span : machines[1].record.series[0].spans)
        span.waited = 1;
    svg = write();
    EXPECT_EQ(svg.Count("another"), 23);
    EXPECT_EQ(svg.rises["#0072b2"].size(), 4u); // of three machines, as two of them gain nothing
    EXPECT_EQ(svg.Count("and 1 more machine"), 1);
    EXPECT_EQ(svg.Count("hollow: shared, two speeds or unsteady"), 1);
}
