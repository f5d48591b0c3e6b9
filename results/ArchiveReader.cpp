#include "results/ArchiveFiles.h"

#include <archive.h>
#include <archive_entry.h>

#include <array>
#include <memory>
#include <string_view>

namespace {

constexpr size_t kBlock = 1 << 16;

// One line that goes to the user.
struct Refusal {
    std::string why;
};

std::string_view NameOf(archive_entry* entry)
{
    // The latter where the name is in an encoding that the user's locale does not have.
    const char* name = archive_entry_pathname(entry);
    if (!name)
        name = archive_entry_pathname_utf8(entry);
    return name ? name : "";
}

// Backslashes count too: archives from other systems have them.
bool LeadsOut(std::string_view path)
{
    if (path.empty() || path.front() == '/' || path.front() == '\\')
        return true;
    while (true) {
        const size_t end = path.find_first_of("/\\");
        if (path.substr(0, end) == "..")
            return true;
        if (end == path.npos)
            return false;
        path.remove_prefix(end + 1);
    }
}

class Unpacker {
public:
    explicit Unpacker(const std::string& bytes) : fArchive(archive_read_new(), archive_read_free)
    {
        if (!fArchive)
            throw Refusal { "there is no memory to read it" };
        archive_read_support_format_zip(Get());
        archive_read_support_format_tar(Get());
        archive_read_support_filter_gzip(Get());
        if (archive_read_open_memory(Get(), bytes.data(), bytes.size()) != ARCHIVE_OK)
            throw Refusal { Damage() };
    }

    std::vector<ArchivedFile> ReadAll()
    {
        std::vector<ArchivedFile> files;
        archive_entry* entry = nullptr;
        while (true) {
            const int status = archive_read_next_header(Get(), &entry);
            if (status == ARCHIVE_EOF)
                return files;
            if (status != ARCHIVE_OK && status != ARCHIVE_WARN)
                throw Refusal { Damage() };
            CountHeaders();
            Check(entry);
            if (archive_entry_filetype(entry) == AE_IFREG) {
                files.push_back({ std::string(NameOf(entry)), Contents(),
                    archive_entry_mtime_is_set(entry) ? archive_entry_mtime(entry) : 0 });
            }
        }
    }

private:
    archive* Get() const { return fArchive.get(); }

    std::string Damage() const
    {
        const char* why = archive_error_string(Get());
        return "is a damaged archive" + (why ? ": " + std::string(why) : "");
    }

    static void Check(archive_entry* entry)
    {
        const std::string name = "<" + std::string(NameOf(entry)) + ">";
        if (LeadsOut(NameOf(entry)))
            throw Refusal { "holds a path that leads out of it: " + name };
        const bool isLink = archive_entry_hardlink(entry) || archive_entry_symlink(entry);
        const auto type = archive_entry_filetype(entry);
        if (isLink || (type != AE_IFREG && type != AE_IFDIR))
            throw Refusal { "holds a link or a device: " + name };
        if (archive_entry_is_encrypted(entry))
            throw Refusal { "is encrypted" };
    }

    static void CheckSize(uint64_t size)
    {
        if (size > kMostUnpacked)
            throw Refusal { "has over 10 MB unpacked" };
    }

    // A tar of nothing but headers can be compressed to next to nothing.
    void CountHeaders() { CheckSize(static_cast<uint64_t>(archive_filter_bytes(Get(), 0))); }

    std::string Contents()
    {
        std::string contents;
        std::array<char, kBlock> block;
        while (true) {
            const la_ssize_t size = archive_read_data(Get(), block.data(), block.size());
            if (size < 0)
                throw Refusal { Damage() };
            if (size == 0)
                return contents;
            fUnpacked += static_cast<size_t>(size);
            CheckSize(fUnpacked);
            contents.append(block.data(), static_cast<size_t>(size));
        }
    }

    const std::unique_ptr<archive, int (*)(archive*)> fArchive;
    size_t fUnpacked = 0;
};

} // namespace

void TarvexReadArchive(const std::string& bytes, FilesOrRefusal& result)
{
    try {
        result = Unpacker(bytes).ReadAll();
    } catch (const Refusal& refusal) {
        result = refusal.why;
    }
}
