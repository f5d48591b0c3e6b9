// Single values in a resource file. Every function returns true if there is a resource of that id
// and type, and of the size of the value; else the output stays as it was.
#pragma once

#include <GraphicsDefs.h>
#include <Rect.h>
#include <Resources.h>

// Copies the text and its end mark into text, which must have room for them.
bool LibFindStringResource(BResources& resources, const int32& id, char* text);
bool LibFindLongResource(BResources& resources, const int32& id, int32& value);
bool LibFindShortResource(BResources& resources, const int32& id, int8& value); // one byte
bool LibFindBoolResource(BResources& resources, const int32& id, bool& value); // one byte
bool LibFindRGBResource(BResources& resources, const int32& id, rgb_color& color);
bool LibFindRectResource(BResources& resources, const int32& id, BRect& rect);
