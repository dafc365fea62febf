#pragma once

// A UTF-16 text in a buffer of fixed capacity. A text that does not fit is cut, and ends with "..."
// to show it.

#include <memory>

#include "platform/text.h"

namespace lunara {

class MessageText {
  public:
    /// How the Format functions store their result: `Set`, `Append` or `Prepend`.
    using Store = void (MessageText::*)(const WCHAR* text);

    /// `startCapacity` (>= 0) is in UTF-16 units, terminator included. With 0 there is no buffer
    /// and every store does nothing. Below 4 a cut text ends with fewer dots, as many as fit.
    explicit MessageText(int startCapacity);
    MessageText(const MessageText&) = delete;
    MessageText& operator=(const MessageText&) = delete;
    MessageText(MessageText&&) = delete;
    MessageText& operator=(MessageText&&) = delete;
    ~MessageText() = default;

    /// Changes the capacity and keeps as much of the text as fits, without marking a cut. 0 frees
    /// the buffer. When memory is short nothing changes.
    void Resize(int newCapacity);

    /// Replaces the content by `text`, which must not lie in this object's own buffer.
    void Set(const WCHAR* text);
    /// Adds `text`, which must not lie in this object's own buffer, at the end.
    void Append(const WCHAR* text);
    /// Inserts `text`, which must not lie in this object's own buffer, in front and cuts the end. A
    /// text that fills the buffer by itself replaces the content.
    void Prepend(const WCHAR* text);

    /// Formats the string resource `id` with printf-style arguments and hands the result to
    /// `store`. Cuts the string and the result to 511 units each. Stores "Resource message
    /// 0x%08X\n", with the id, when there is no such string.
    void FormatResource(Store store, UINT id, ...);
    /// Hands the system's text of an error code to `store`, or "System message 0x%08X\n" when it
    /// has none.
    void FormatSystem(Store store, DWORD code);

    /// Copies the text, cut to `size` (>= 1) units, terminator included. A cut copy ends with
    /// "...".
    void CopyTo(WCHAR* target, int size) const;

    const WCHAR* Text() const { return buffer ? buffer.get() : TEXT(""); }
    bool IsEmpty() const { return Text()[0] == 0; }
    int Capacity() const { return capacity; }

  private:
    std::unique_ptr<WCHAR[]> buffer;
    int capacity = 0;
};

}  // namespace lunara
