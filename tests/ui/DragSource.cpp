// dragsource FILE...: a small window, as another program's, that the files can be dragged from; it
// says "taken" where they can be dropped.
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
        QList<QUrl> urls;
        for (const QString& path : QApplication::arguments().mid(1))
            urls.append(QUrl::fromLocalFile(path));
        auto* files = new QMimeData;
        files->setUrls(urls);
        auto* drag = new QDrag(this);
        drag->setMimeData(files);
        connect(drag, &QDrag::actionChanged, [](Qt::DropAction action) {
            if (action == Qt::CopyAction) {
                puts("taken");
                fflush(stdout);
            }
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
