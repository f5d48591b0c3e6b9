// A bare Qt window with the controls of Tarvex's main window, laid out by Qt: what startup compares
// with.

#include <QtWidgets>

#include <csignal>

namespace {

QGroupBox* Box(const QString& label, const QStringList& names)
{
    auto* box = new QGroupBox(label);
    auto* rows = new QVBoxLayout(box);
    for (const QString& name : names)
        rows->addWidget(new QCheckBox(name));
    return box;
}

} // namespace

int main(int argc, char** argv)
{
    signal(SIGTERM, [](int) { _exit(0); });
    QApplication application(argc, argv);
    QMainWindow window;
    QMenu* first = window.menuBar()->addMenu("Tarvex");
    for (const char* name : { "About Tarvex...", "Help...", "System...", "Quit" })
        first->addAction(name);
    QMenu* second = window.menuBar()->addMenu("Benchmark");
    second->addAction("Test");
    second->addAction("All");

    auto* background = new QWidget;
    auto* columns = new QGridLayout(background);
    columns->addWidget(Box("Architecture",
                           { "Graphics", "Strings", "Memory", "Savage", "Ackerman", "Fourier",
                               "Whetstone", "Sieve" }),
        0, 0, 2, 1);
    columns->addWidget(Box("Disk", { "LifeCycle", "Input/Output" }), 0, 1);
    auto* time = new QGroupBox("Estimated Test Time");
    (new QVBoxLayout(time))->addWidget(new QLabel("0:00"));
    columns->addWidget(time, 1, 1);
    columns->addWidget(new QLabel("Select <Shift><F1> for on-line help"), 2, 0, 1, 2);
    window.setCentralWidget(background);
    window.setWindowTitle("Bare");
    window.show();
    return application.exec();
}
