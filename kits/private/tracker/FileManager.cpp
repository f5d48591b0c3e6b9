#include "FileManager.h"

#include "Desktop.h"
#include "Entry.h"
#include "Looper.h"
#include "Message.h"
#include "TextCoding.h"

#include <cstdio>
#include <string>
#include <sys/stat.h>
#include <vector>

const char* const kFileManagerSignature = "application/x-vnd.Be-TRAK";

namespace {

constexpr char kManager[] = "org.freedesktop.FileManager1";
constexpr char kManagerObject[] = "/org/freedesktop/FileManager1";
constexpr int kTimeoutMillis = 5000; // a program that ends does not wait longer

BusMessage MakeCall(const char* method, const std::vector<std::string>& paths)
{
    BusMessage call = MakeBusCall(kManager, kManagerObject, kManager, method);
    std::vector<std::string> uris;
    for (const std::string& path : paths)
        uris.push_back("file://" + PercentEncoded(path));
    std::vector<const char*> texts;
    for (const std::string& uri : uris)
        texts.push_back(uri.c_str());
    const char** first = texts.data();
    const char* startupId = "";
    if (call
        && !dbus_message_append_args(call.get(), DBUS_TYPE_ARRAY, DBUS_TYPE_STRING, &first,
            static_cast<int>(texts.size()), DBUS_TYPE_STRING, &startupId, DBUS_TYPE_INVALID))
        call.reset();
    return call;
}

// Calls a method of org.freedesktop.FileManager1 on the session bus with the URIs of absolute
// paths. True if a file manager has taken the call, also if it did not answer in time; false if
// there is no bus, no file manager, or it does not know the method.
bool CallFileManager(const char* method, const std::vector<std::string>& paths)
{
    // One of its own for each request: file managers come and go with the session.
    const BusConnection connection =
        ConnectToSession(BusClock::now() + std::chrono::milliseconds(kTimeoutMillis));
    const BusMessage call = MakeCall(method, paths);
    if (!connection || !call)
        return false;
    DBusError error = DBUS_ERROR_INIT;
    const BusMessage reply(dbus_connection_send_with_reply_and_block(
                               connection.get(), call.get(), kTimeoutMillis, &error),
        dbus_message_unref);
    // It may well be busy with what was asked: to open the entry elsewhere too would be wrong.
    const bool taken = reply || dbus_error_has_name(&error, DBUS_ERROR_NO_REPLY)
        || dbus_error_has_name(&error, DBUS_ERROR_TIMEOUT);
    dbus_error_free(&error);
    return taken;
}

constexpr uint32 kGetInfo = 'Tinf';

bool IsFolder(const std::string& path)
{
    struct stat info = {};
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

class FileManager : public BLooper {
public:
    FileManager() : BLooper("file manager") { }
    void MessageReceived(BMessage* message) override;

private:
    static status_t Open(const std::vector<std::string>& paths);
    static status_t ShowInfo(const std::vector<std::string>& paths);
    static status_t StartOpeners(const std::vector<std::string>& paths);
};

// The paths of the entries that exist; *status becomes B_ERROR if one does not.
std::vector<std::string> PathsOf(const BMessage& message, status_t* status)
{
    std::vector<std::string> paths;
    entry_ref ref;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; i++) {
        const std::string path = PathOfRef(ref);
        struct stat info = {};
        if (!path.empty() && lstat(path.c_str(), &info) == 0) {
            paths.push_back(path);
        } else {
            fprintf(stderr, "No file to show <%s>\n", path.c_str());
            *status = B_ERROR;
        }
    }
    return paths;
}

void FileManager::MessageReceived(BMessage* message)
{
    if (message->what != B_REFS_RECEIVED && message->what != kGetInfo) {
        BLooper::MessageReceived(message);
        return;
    }
    status_t missing = B_OK;
    const std::vector<std::string> paths = PathsOf(*message, &missing);
    const status_t status = message->what == kGetInfo ? ShowInfo(paths) : Open(paths);
    BMessage reply(B_REPLY);
    reply.AddInt32("error", status == B_OK ? missing : status);
    if (message->IsSourceWaiting())
        message->SendReply(&reply);
}

status_t FileManager::Open(const std::vector<std::string>& paths)
{
    std::vector<std::string> folders;
    std::vector<std::string> files;
    for (const std::string& path : paths)
        (IsFolder(path) ? folders : files).push_back(path);
    status_t status = B_OK;
    if (!folders.empty() && !CallFileManager("ShowFolders", folders))
        status = StartOpeners(folders);
    if (!files.empty() && !CallFileManager("ShowItems", files) && StartOpeners(files) != B_OK)
        status = B_ERROR;
    return status;
}

status_t FileManager::ShowInfo(const std::vector<std::string>& paths)
{
    if (paths.empty() || CallFileManager("ShowItemProperties", paths))
        return B_OK;
    std::vector<std::string>
        folders; // nothing else shows information: from there the user finds it
    for (const std::string& path : paths)
        folders.push_back(path.substr(0, std::max<size_t>(path.rfind('/'), 1)));
    return StartOpeners(folders);
}

status_t FileManager::StartOpeners(const std::vector<std::string>& paths)
{
    status_t status = B_OK;
    for (const std::string& path : paths) {
        if (StartProgram({ "xdg-open", path }))
            continue;
        fprintf(stderr, "No program to open files with <%s>\n", path.c_str());
        status = B_ERROR;
    }
    return status;
}

// The looper for as long as the program runs.
class RunningManager {
public:
    RunningManager() : fLooper(new FileManager)
    {
        if (fLooper->Run() >= B_OK)
            fTarget = BMessenger(fLooper);
        else
            fprintf(stderr, "Cannot start thread <file manager>\n");
    }
    ~RunningManager()
    {
        if (fLooper->Lock())
            fLooper->Quit(); // which unlocks: so this is no block
    }
    RunningManager(const RunningManager&) = delete;
    RunningManager& operator=(const RunningManager&) = delete;

    const BMessenger& Target() const { return fTarget; }

private:
    FileManager* const fLooper; // deletes itself in Quit()
    BMessenger fTarget;
};

} // namespace

BMessenger FileManagerMessenger()
{
    static const RunningManager sManager;
    return sManager.Target();
}
