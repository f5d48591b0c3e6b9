// The pictures in files, written where there is no display.
#include "results/ChartPicture.h"

#include "results/ScalingPicture.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Test.h"

#include <QImage>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

// The texts of an SVG but for numbers, then, by their colours, the widths of its bars, and of
// sloping lines how much higher the right end is.
std::string Drawn(const std::string& path)
{
    const std::string file = ReadFile(path);
    QXmlStreamReader reader(QByteArray::fromStdString(file));
    QStringList texts;
    std::map<QString, QString> shapes;
    QString color, pen;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto value = [&reader](const char* name) {
            return reader.attributes().value(QLatin1String(name)).toString();
        };
        if (reader.name() == QLatin1String("g")) {
            color = value("fill");
            pen = value("stroke");
        } else if (reader.name() == QLatin1String("polyline")) {
            const QStringList points = value("points").split(' ', Qt::SkipEmptyParts);
            const auto at = [&](int i, int side) { return points[i].split(',')[side].toDouble(); };
            if (points.size() == 2 && at(0, 0) != at(1, 0) && at(0, 1) != at(1, 1))
                shapes[pen] += QString(" up %1").arg(std::lround(at(0, 1) - at(1, 1)));
        } else if (reader.name() == QLatin1String("rect") && value("height") == "11") {
            shapes[color] += QString(" %1").arg(std::lround(value("width").toDouble()));
        } else if (reader.name() == QLatin1String("text")) {
            texts << reader.readElementText();
            if (texts.last().contains(QRegularExpression("^[\\d.]+$")))
                texts.removeLast();
        }
    }
    for (const auto& [name, told] : shapes)
        texts << name + told;
    return (texts.join('|') + reader.errorString()).toStdString();
}

const std::string kEight = "1 CPU|2 CPU|3 CPU|4 CPU|5 CPU|6 CPU|7 CPU|8 CPU";

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
    EXPECT_EQ(Drawn(folder / "a.SVG"),
        "Sieve|" + kEight
            + "|Configuration|( IPS )|One <A&B>\ufffd (2-x)|Other (1-y)|#0000c8 97 195|#00b200 "
              "389");
    comparison.selected = comparison.machines.First();
    comparison.byRatio = true;
    comparison.UpdateScale();
    EXPECT_EQ(Said(folder / "a.SVG"), "");
    EXPECT_EQ(Drawn(folder / "a.SVG"),
        "Sieve, percent of One <A&B>\ufffd (2-x)|" + kEight
            + "|Configuration|( Percent )|One <A&B>\ufffd (2-x)|Other (1-y)|#0000c8 91 181|#00b200 "
              "363");
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
    const auto drawn = [&](const TestType& test) {
        EXPECT_EQ(WriteMachinesChart((folder / "b.svg").c_str(), machines, 0, test), "");
        return Drawn(folder / "b.svg");
    };
    EXPECT_EQ(drawn(TestNamed("Sieve")),
        "Sieve|" + kEight
            + "|Configuration|( IPS )|few|two|#0000c8 99|#00b200 199|#00ff00 397|#33cb98 199");
    for (MeasuredMachine& machine : machines)
        AddTimes(machine.record, TestNamed("Ten Threaded Whetstones"), 1, 0.02, 0);
    EXPECT_EQ(drawn(TestNamed("Ten Threaded Whetstones")),
        "Ten Threaded Whetstones (less is better)|" + kEight
            + "|Configuration|( milliseconds )|few|none|two|#0000c8 267 267 267");
    machines.push_back(Machine("many", { { 16, 1 }, { 2, 2 } }));
    EXPECT_EQ(drawn(TestNamed("Sieve")),
        "Sieve|1 CPU|2 CPU|4 CPU|8 CPU|16 CPU|Configuration|( IPS )|few|two|many|#0000c8 "
        "99|#00b200 199 199|#33cb98 397|#66cbff 397|#cb66ff 199");
    machines.push_back(Machine("more", { { 10, 1 }, { 11, 1 }, { 12, 1 }, { 13, 1 } }));
    EXPECT_EQ(drawn(TestNamed("Sieve")),
        "Sieve|1 CPU|4 CPU|8 CPU|10 CPU|11 CPU|12 CPU|13 CPU|16 CPU|Configuration|( IPS "
        ")|few|many|more|of 9 processor counts the least and the seven greatest|#0000c8 99|#00b200 "
        "199|#00ff00 397|#cb66ff 397|#ff9800 397");
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
        return Drawn(folder / "c.svg");
    };
    EXPECT_EQ(write(),
        "Sieve|half|ideal|Speed-up|Processors|Efficiency (percent)|Processors|#0072b2 up 99 up "
        "-99|#a0a0a0 up 198");
    std::string others;
    for (int i = 0; i < 24; i++) {
        machines.push_back(Machine("another", { { 1, 1 }, { 2, 1 } }));
        others += i < 23 ? "|another" : "";
    }
    for (Span& span : machines[1].record.series[0].spans)
        span.waited = 1;
    EXPECT_EQ(write(),
        "Sieve|half" + others
            + "|ideal|hollow: shared, two speeds or unsteady|and 1 more "
              "machine|Speed-up|Processors|Efficiency (percent)|Processors|#000000 up -124 up -124 "
              "up -124|#0072b2 up 99 up -99 up -124 up -124|#009e73 up -124 up -124 up "
              "-124|#56b4e9 up -124 up -124 up -124|#787878 up -124 up -124 up -124|#a0a0a0 up "
              "198|#cc79a7 up -124 up -124 up -124|#d55e00 up -124 up -124 up -124|#e69f00 up -124 "
              "up -124 up -124");
    machines.resize(2);
    for (MeasuredMachine& machine : machines)
        for (const int32 processors : { 1, 5 })
            AddTimes(machine.record, TestNamed("Memory"), processors, 1.0 / processors, 1);
    EXPECT_EQ(WriteScalingPicture((folder / "c.svg").c_str(), machines,
                  ScalingOf(machines, [](const TestType&) { return true; })),
        "");
    EXPECT_EQ(Drawn(folder / "c.svg"),
        "Scaling of 2 tests|half|another|ideal|hollow: shared, two speeds or "
        "unsteady|Memory|Speed-up|Processors|Efficiency "
        "(percent)|Processors|Sieve|Speed-up|Processors|Efficiency (percent)|Processors|#0072b2 up "
        "99 up 49 up -50|#a0a0a0 up 99 up 99|#d55e00 up 99 up -62");
}
