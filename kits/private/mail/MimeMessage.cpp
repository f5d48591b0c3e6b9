#include "MimeMessage.h"

#include <gmime/gmime.h>

#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

template <typename T>
struct Unref {
    void operator()(T* object) const { g_object_unref(object); }
};
template <typename T>
using Ref = std::unique_ptr<T, Unref<T>>;

Ref<GMimePart> TextPart(const std::string& text)
{
    Ref<GMimeTextPart> part(g_mime_text_part_new_with_subtype("plain"));
    g_mime_text_part_set_text(part.get(), text.c_str());
    return Ref<GMimePart>(GMIME_PART(part.release()));
}

// The file as an attachment under its own name; null if it cannot be read.
Ref<GMimePart> FilePart(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        fprintf(stderr, "Error reading <%s>\n", path.c_str());
        return nullptr;
    }
    const Ref<GMimeStream> stream(g_mime_stream_fs_new(file)); // closes it
    const Ref<GMimeDataWrapper> content(
        g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
    Ref<GMimePart> part(g_mime_part_new_with_type("application", "octet-stream"));
    g_mime_part_set_content(part.get(), content.get());
    g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
    // Which also makes it an attachment.
    g_mime_part_set_filename(part.get(), path.substr(path.rfind('/') + 1).c_str());
    return part;
}

void SetHeaders(GMimeMessage* message, const MailParts& parts)
{
    for (const auto& [name, text] : parts.headers)
        g_mime_object_set_header(GMIME_OBJECT(message), name.c_str(), text.c_str(), "utf-8");
    GDateTime* now = g_date_time_new_now_local();
    g_mime_message_set_date(message, now);
    g_date_time_unref(now);
}

} // namespace

extern "C" status_t tarvex_write_mime_message(const MailParts& parts, int file)
{
    g_mime_init(); // counted: harmless once it was done
    const Ref<GMimeMessage> message(g_mime_message_new(TRUE));
    SetHeaders(message.get(), parts);
    const Ref<GMimeMultipart> mixed(g_mime_multipart_new_with_subtype("mixed"));
    g_mime_multipart_add(mixed.get(), GMIME_OBJECT(TextPart(parts.text).get()));
    for (const std::string& path : parts.enclosures) {
        const Ref<GMimePart> part = FilePart(path);
        if (!part)
            return B_ENTRY_NOT_FOUND;
        g_mime_multipart_add(mixed.get(), GMIME_OBJECT(part.get()));
    }
    g_mime_message_set_mime_part(message.get(), GMIME_OBJECT(mixed.get()));
    const Ref<GMimeStream> stream(g_mime_stream_fs_new(dup(file)));
    if (g_mime_object_write_to_stream(GMIME_OBJECT(message.get()), nullptr, stream.get()) < 0
        || g_mime_stream_flush(stream.get()) != 0)
        return B_DEVICE_FULL;
    return B_OK;
}
