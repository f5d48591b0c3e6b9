// The type of a file.
#pragma once

#include "SupportDefs.h"

class BNode;

class BNodeInfo {
public:
    BNodeInfo() = default; // B_NO_INIT
    BNodeInfo(BNode* node); // as SetTo()
    virtual ~BNodeInfo() = default;

    // The node is not owned and must outlive the object or the next SetTo(). B_BAD_VALUE: NULL or
    // without a file.
    status_t SetTo(BNode* node);

    // The MIME type, B_MIME_TYPE_LENGTH bytes: the one that was set, else what the file is by kind,
    // name and contents ("application/octet-stream": nobody knows). B_NO_INIT, B_BAD_VALUE, else as
    // BNode::ReadAttr().
    virtual status_t GetType(char* type) const;
    // NULL takes the type that was set away. B_BAD_VALUE: not shorter than B_MIME_TYPE_LENGTH; else
    // as BNode::WriteAttr().
    virtual status_t SetType(const char* type);

protected:
    BNode* Node() const { return fNode; }

private:
    BNode* fNode = nullptr;
};
