#include "application/note.h"

#include "control.h"
#include "core/session.h"

namespace standin {

namespace {

// Written and read on the user-interface thread.
std::wstring& theNote()
{
    static std::wstring note;
    return note;
}

} // namespace

std::wstring shownNote()
{
    return theNote();
}

void showNote(const std::wstring& text)
{
    theNote() = text;
    repaintView();
}

} // namespace standin
