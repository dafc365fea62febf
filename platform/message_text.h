#pragma once

// A bounded UTF-16 text builder. Whatever is stored, the text never exceeds its capacity, and a
// text that had to be cut says so: its last three units are "...".

#include <memory>

#include "platform/text.h"

namespace lunara {

class MessageText {
  public:
    using Store = void (MessageText::*)(const WCHAR* text);

    /// `capacity` in UTF-16 units with the terminator, >= 0; with 0 there is no buffer and every
    /// store does nothing. Capacities under 4 cut without the dots that do not fit.
    explicit MessageText(int startCapacity);
    MessageText(const MessageText&) = delete;
    MessageText& operator=(const MessageText&) = delete;
    MessageText(MessageText&&) = delete;
    MessageText& operator=(MessageText&&) = delete;
    ~MessageText() = default;

    /// Keeps as much of the text as fits. 0 frees the buffer. Without memory nothing changes.
    void Resize(int newCapacity);

    // What is stored must not be a part of the builder's own text.
    void Set(const WCHAR* text);
    void Append(const WCHAR* text);
    /// Puts the text in front; one that fills the buffer by itself replaces the old text, cut.
    void Prepend(const WCHAR* text);

    /// Formats string `id` (up to 511 units, and as many after formatting) with printf-style
    /// arguments and hands it to `store`; "Resource message 0x%08X\n" when there is no such string.
    void FormatResource(Store store, UINT id, ...);
    /// The system's text of an error code; "System message 0x%08X\n" when it has none.
    void FormatSystem(Store store, DWORD code);

    /// At most `size` units (>= 1), terminated, a cut copy marked like a cut text. Part of the
    /// builder's public operations; the program itself does not call it.
    void CopyTo(WCHAR* target, int size) const;

    const WCHAR* Text() const { return buffer ? buffer.get() : TEXT(""); }
    bool IsEmpty() const { return Text()[0] == 0; }
    int Capacity() const { return capacity; }

  private:
    std::unique_ptr<WCHAR[]> buffer;
    int capacity = 0;
};

}  // namespace lunara
