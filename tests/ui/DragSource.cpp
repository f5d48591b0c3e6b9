// dragsource FILE: a small window, as another program's, that the file can be dragged from; it says
// "taken" on standard error where it can be dropped.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

#include <cstdio>

namespace {

class Source : public QWidget {
protected:
    void mousePressEvent(QMouseEvent*) override
    {
        auto* files = new QMimeData;
        files->setUrls({ QUrl::fromLocalFile(QApplication::arguments().at(1)) });
        auto* drag = new QDrag(this);
        drag->setMimeData(files);
        connect(drag, &QDrag::actionChanged, [](Qt::DropAction action) {
            if (action == Qt::CopyAction)
                fputs("taken\n", stderr);
        });
        drag->exec(Qt::CopyAction);
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    Source source;
    source.setWindowTitle("Files");
    source.setGeometry(20, 650, 120, 80);
    source.show();
    return QApplication::exec();
}
