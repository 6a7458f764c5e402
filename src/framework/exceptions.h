// The framework's exception type: created on the heap, thrown and caught as a pointer.
#pragma once

#include "framework/objects.h"

class CException : public CObject {
public:
    // Writes the exception's text, cut to `bufferLength` characters including the terminating zero,
    // and returns TRUE; returns FALSE and leaves an empty text when the exception has none.
    virtual BOOL GetErrorMessage(LPWSTR buffer, UINT bufferLength,
                                 PUINT helpContext = nullptr) const;

    // Ends the exception's life. Whoever catches it and does not throw it on calls this once.
    void Delete();
};
