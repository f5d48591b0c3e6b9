// The pictures in files, written where there is no display.
#include "results/ChartPicture.h"

#include "foundation/PlainText.h"
#include "results/ComparisonChart.h"
#include "results/ScalingPicture.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Test.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

// The elements of an SVG: their colours, the width of the pen and, in whole units, where they are.
// Of texts that is so only roughly: how wide they are is the font's.
QStringList Elements(const std::string& path)
{
    const std::string file = ReadFile(path);
    QXmlStreamReader reader(QByteArray::fromStdString(file));
    QStringList elements;
    QString pen;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto value = [&reader](const char* name) {
            return reader.attributes().value(QLatin1String(name)).toString();
        };
        const QString name = reader.name().toString();
        if (name == "g")
            pen = " " + value("fill") + " " + value("stroke") + " " + value("stroke-width");
        QStringList numbers;
        for (const char* part : { "points", "d", "x", "y", "width", "height", "cx", "cy", "r" })
            for (const QString& number : value(part).split(QRegularExpression("[ ,ML]")))
                numbers << (number.isEmpty() ? ""
                                             : QString::number(std::lround(number.toDouble())));
        numbers.removeAll("");
        if (name == "text") {
            const QString at = "text " + value("fill") + " " + value("font-size") + ": "
                + QString::number(std::lround(value("x").toDouble() / 50)) + " " + value("y");
            elements << at + " " + reader.readElementText().left(60);
        } else if (!numbers.isEmpty() && value("viewBox").isEmpty()) {
            elements << (name + pen).trimmed() + ": " + numbers.join(' ');
        }
    }
    return elements;
}

// Those of a chart but for its grid: which of its lines have room for a number is the font's.
std::string Drawn(const std::string& path)
{
    const QRegularExpression wanted("^(?!polyline|text.* \\d+$)");
    return Elements(path).filter(wanted).join('\n').toStdString() + "\n";
}

const std::string kData = TARVEX_TESTS "/results/data/";

class ChartPictureTest : public testing::Test {
protected:
    void SetUp() override
    {
        unsetenv("DISPLAY");
        cpu_color.fill(black_color);
        ResetCpuColors();
        unsetenv("WAYLAND_DISPLAY");
        WriteFile(folder / "machines",
            "1.0\n29\nOne <A&B>\x01 (2-x)\t700:400/1,4;\n"
            "24\nOther (1-y)\t700:200/1.0;\n");
        ASSERT_TRUE(comparison.Load({ (folder / "machines").c_str() }).isRead);
        comparison.ChooseTest("Sieve");
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

} // namespace

TEST_F(ChartPictureTest, SvgHasTheTextsAsTextAndBarsInProportion)
{
    EXPECT_TRUE(WriteChartPicture((folder / "a.SVG").c_str(), comparison));
    const std::string rates = Drawn(folder / "a.SVG");
    const auto labels = Elements(folder / "a.SVG").filter(QRegularExpression("^text.* \\d+$"));
    EXPECT_TRUE(labels.size() > 5 && labels.size() < 25) << "of forty lines, ten apart";
    const QRegularExpression line("^polyline.*#(808080|d8d8d8) 1: (\\d+) -?\\d+ \\2 \\d+$");
    EXPECT_EQ(Elements(folder / "a.SVG").filter(line).size(), 40);
    comparison.selected = comparison.machines.First();
    comparison.byRatio = true;
    comparison.UpdateScale();
    EXPECT_TRUE(WriteChartPicture((folder / "a.SVG").c_str(), comparison));
    EXPECT_EQ(rates + Drawn(folder / "a.SVG"), ReadFile(kData + "charts-window"));
}

TEST_F(ChartPictureTest, ShowsMeasuredMachinesByTheCountsThatTheyHave)
{
    std::vector<MeasuredMachine> machines = { Machine("few", { { 8, 1 }, { 4, 2 }, { 1, 4 } }),
        Machine("none", {}), Machine("two", { { 2, 2 } }) };
    std::string drawn;
    const auto draw = [&](const TestType& test) {
        EXPECT_EQ(WriteMachinesChart((folder / "b.svg").c_str(), machines, 0, test), "");
        drawn += Drawn(folder / "b.svg");
    };
    draw(TestNamed("Sieve"));
    for (MeasuredMachine& machine : machines)
        for (const double seconds : { 0.02, 10.0 })
            AddTimes(machine.record,
                seconds < 1 ? TestNamed("Ten Threaded Whetstones")
                            : TestNamed("Ten Sequential Whetstones"),
                1, seconds, 0, 1);
    draw(TestNamed("Ten Threaded Whetstones"));
    draw(TestNamed("Ten Sequential Whetstones"));
    machines.push_back(Machine("many", { { 16, 1 }, { 2, 2 } }));
    draw(TestNamed("Sieve"));
    machines.push_back(Machine("more", { { 10, 1 }, { 11, 1 }, { 12, 1 }, { 13, 1 } }));
    draw(TestNamed("Sieve"));
    EXPECT_EQ(drawn, ReadFile(kData + "charts-machines"));
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
    std::string told;
    for (const TestScaling& test : ScalingOf(machines, [](const TestType&) { return true; })) {
        for (const ScalingCurve& curve : test.curves) {
            told += test.test->name + (" of " + machines[curve.machine].name) + ":";
            for (const ScalingPoint& point : curve.points)
                told += " " + std::to_string(point.processors) + "="
                    + LibFixedText(point.speedUp, 6) + "/" + LibFixedText(point.Efficiency(), 6)
                    + (point.isDoubtful ? "?" : "");
            told += "\n";
        }
    }
    EXPECT_EQ(told,
        "Sieve of ideal: 1=1.000000/1.000000 2=2.000000/1.000000 4=4.000000/1.000000\n"
        "Sieve of large: 8=8.000000/1.000000 16=12.000000/0.750000\n");
}

TEST_F(ChartPictureTest, ScalingRisesInProportionBesideTheIdealLine)
{
    std::vector<MeasuredMachine> machines = { Machine("half", { { 1, 4 }, { 5, 4.0 / 3 } }) };
    machines[0].record.series[1].spans[3].waited = 1; // one of ten: the clean ones do
    const TestFilter isSieve = [](const TestType& test) { return test.id == 700; };
    const auto elements = [&](const TestFilter& isWanted) {
        const std::string path = folder / "c.svg";
        EXPECT_EQ(WriteScalingPicture(path.c_str(), machines, ScalingOf(machines, isWanted)), "");
        return Elements(path);
    };
    EXPECT_EQ(elements(isSieve).join('\n').toStdString() + "\n", ReadFile(kData + "scaling-one"));

    for (int i = 0; i < 24; i++)
        machines.push_back(Machine("another", { { 1, 1 }, { 2, 1 } }));
    for (Span& span : machines[1].record.series[0].spans)
        span.waited = 1;
    std::map<QString, int> counts; // of equal ones; texts by their lines, triangles by their form
    for (const QString& element : elements(isSieve)) {
        QString kind = element.section(':', 0, 0);
        const QStringList points = element.section(": ", 1).split(' ');
        if (element.startsWith("text"))
            kind += " at " + element.section(' ', 4);
        for (int i = 2; element.startsWith("path") && i < points.size(); i++)
            kind += QString(" %1").arg(points[i].toInt() - points[i % 2].toInt());
        counts[kind]++;
    }
    QString told;
    for (const auto& [element, count] : counts)
        told += QString("%1 %2\n").arg(count).arg(element);
    EXPECT_EQ(told.toStdString(), ReadFile(kData + "scaling-many"));

    machines.resize(2);
    for (MeasuredMachine& machine : machines) {
        machine.name = std::string(300, 'm'); // takes a row of the legend
        for (const int32 processors : { 1, 4, 20, 21 })
            AddTimes(machine.record, TestNamed("Memory"), processors, 1.0 / processors, 1);
    }
    EXPECT_EQ(elements([](const TestType&) { return true; }).join('\n').toStdString() + "\n",
        ReadFile(kData + "scaling-two"));
}
