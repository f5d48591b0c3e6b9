#include "ClipboardData.h"

#include "Message.h"
#include "server/DisplayServer.h"
#include "TypeConstants.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <cstring>

namespace {

QMimeData* MimeDataOf(const BMessage& data)
{
    auto* mimeData = new QMimeData;
    char* name = nullptr;
    type_code type = 0;
    for (int32 i = 0; data.GetInfo(B_MIME_TYPE, i, &name, &type) == B_OK; i++) {
        const void* bytes = nullptr;
        ssize_t size = 0;
        if (data.FindData(name, B_MIME_TYPE, &bytes, &size) != B_OK)
            continue;
        const QByteArray copy(static_cast<const char*>(bytes), size);
        // Text by its other names too, as each program asks by one of its own.
        if (strcmp(name, "text/plain") == 0)
            mimeData->setText(QString::fromUtf8(copy));
        else
            mimeData->setData(QString::fromUtf8(name), copy);
    }
    return mimeData;
}

} // namespace

status_t copy_to_clipboard(const BMessage& data)
{
    if (!display::Start())
        return B_ERROR;
    display::Call([&data] { QGuiApplication::clipboard()->setMimeData(MimeDataOf(data)); });
    return B_OK;
}
