#include "Path.h"

#include "Directory.h"

namespace {

// Whether a path has something in it that only normalizing takes out.
bool MustBeNormalized(const std::string& path)
{
    if (path[0] != '/' || (path.size() > 1 && path.back() == '/'))
        return true;
    // So the last part is found like those before it. The root alone would become "//".
    const std::string closed = path + "/";
    for (const char* part : { "//", "/./", "/../" })
        if (closed.size() > 2 && closed.find(part) != closed.npos)
            return true;
    return false;
}

} // namespace

BPath::BPath(const char* path, const char* leaf, bool normalize)
{
    SetTo(path, leaf, normalize);
}

BPath::BPath(const BDirectory* directory, const char* leaf, bool normalize)
{
    SetTo(directory, leaf, normalize);
}

BPath::BPath(const entry_ref* ref)
{
    SetTo(ref);
}

status_t BPath::InitCheck() const
{
    return fStatus;
}

status_t BPath::Take(const std::string& path, bool normalize)
{
    if (!normalize && !MustBeNormalized(path)) {
        fPath = path;
        return fStatus = B_OK;
    }
    // By the file system, not by the text: ".." behind a link leads elsewhere than the letters say.
    entry_ref ref;
    const status_t error = get_ref_for_path(path.c_str(), &ref);
    fPath = error == B_OK ? PathOfRef(ref) : "";
    return fStatus = error;
}

status_t BPath::SetTo(const char* path, const char* leaf, bool normalize)
{
    if (!path || !*path || (leaf && *leaf == '/')) {
        fPath.clear();
        return fStatus = B_BAD_VALUE;
    }
    std::string whole = path;
    if (leaf && *leaf)
        whole += (whole.back() == '/' ? "" : "/") + std::string(leaf);
    return Take(whole, normalize);
}

status_t BPath::SetTo(const BDirectory* directory, const char* leaf, bool normalize)
{
    BEntry entry;
    BPath path;
    status_t error = directory ? directory->GetEntry(&entry) : B_BAD_VALUE;
    if (error == B_OK)
        error = entry.GetPath(&path);
    if (error == B_OK)
        return SetTo(path.Path(), leaf, normalize);
    fPath.clear();
    return fStatus = error;
}

status_t BPath::SetTo(const entry_ref* ref)
{
    return SetTo(ref ? PathOfRef(*ref).c_str() : nullptr);
}

void BPath::Unset()
{
    fPath.clear();
    fStatus = B_NO_INIT;
}

status_t BPath::Append(const char* path, bool normalize)
{
    // From a copy: path may point into the object's own text.
    const std::string before = fPath;
    const std::string behind = path ? path : "";
    return SetTo(before.c_str(), path ? behind.c_str() : nullptr, normalize);
}

const char* BPath::Path() const
{
    return fStatus == B_OK ? fPath.c_str() : nullptr;
}

const char* BPath::Leaf() const
{
    return fStatus == B_OK ? fPath.c_str() + fPath.rfind('/') + 1 : nullptr;
}

status_t BPath::GetParent(BPath* path) const
{
    if (!path)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return fStatus;
    if (fPath == "/")
        return B_ENTRY_NOT_FOUND;
    const size_t slash = fPath.rfind('/');
    const std::string parent = fPath.substr(0, slash == 0 ? 1 : slash);
    return path->SetTo(parent.c_str());
}

bool BPath::operator==(const BPath& path) const
{
    return fPath == path.fPath;
}

bool BPath::operator==(const char* path) const
{
    return *this == BPath(path);
}
