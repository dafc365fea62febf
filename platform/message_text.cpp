#include "platform/message_text.h"

#include <algorithm>
#include <array>
#include <new>

namespace lunara {
namespace {

/// Buffer size for a string resource and for a formatted message, in units, terminator included.
constexpr std::size_t MessageUnits = 512;

int Length(const WCHAR* text) { return static_cast<int>(WideView(text).size()); }

/// Marks a text as cut: writes "...", or as many dots as fit, to the end of the buffer and
/// terminates it.
void MarkCut(WCHAR* text, int capacity) {
    for (int place = std::max(0, capacity - 4); place < capacity - 1; ++place) {
        text[place] = '.';
    }
    text[capacity - 1] = 0;
}

/// Terminates a text of `length` units, of which those that fit are in place already; marks it when
/// some did not fit.
void Finish(WCHAR* text, int capacity, int length) {
    if (length >= capacity) {
        MarkCut(text, capacity);
    } else {
        text[length] = 0;
    }
}

}  // namespace

MessageText::MessageText(int startCapacity) { Resize(startCapacity); }

void MessageText::Resize(int newCapacity) {
    std::unique_ptr<WCHAR[]> resized;
    if (newCapacity > 0) {
        resized.reset(new (std::nothrow) WCHAR[static_cast<std::size_t>(newCapacity)]);
        if (!resized) {
            return;
        }
        CopyText(resized.get(), static_cast<std::size_t>(newCapacity), Text());
    }
    capacity = std::max(0, newCapacity);
    buffer = std::move(resized);
}

void MessageText::Set(const WCHAR* text) {
    if (!buffer) {
        return;
    }
    const int length = Length(text);
    std::copy_n(text, std::min(length, capacity - 1), buffer.get());
    Finish(buffer.get(), capacity, length);
}

void MessageText::Append(const WCHAR* text) {
    if (!buffer) {
        return;
    }
    const int oldLength = Length(buffer.get());
    const int length = Length(text);
    std::copy_n(text, std::min(length, capacity - 1 - oldLength), buffer.get() + oldLength);
    Finish(buffer.get(), capacity, oldLength + length);
}

void MessageText::Prepend(const WCHAR* text) {
    if (!buffer) {
        return;
    }
    const int oldLength = Length(buffer.get());
    const int length = Length(text);
    const int room = capacity - 1;
    const int front = std::min(length, room);
    const int moved = std::min(oldLength, room - front);
    std::copy_backward(buffer.get(), buffer.get() + moved, buffer.get() + front + moved);
    std::copy_n(text, front, buffer.get());
    Finish(buffer.get(), capacity, oldLength + length);
}

void MessageText::FormatResource(Store store, UINT id, ...) {
    std::array<WCHAR, MessageUnits> format{};
    std::array<WCHAR, MessageUnits> message{};
    if (::LoadStringW(nullptr, id, format.data(), static_cast<int>(format.size())) == 0) {
        FormatText(message.data(), message.size(), TEXT("Resource message 0x%08X\n"), id);
    } else {
        va_list arguments;
        va_start(arguments, id);
        FormatTextV(message.data(), message.size(), format.data(), arguments);
        va_end(arguments);
    }
    (this->*store)(message.data());
}

void MessageText::FormatSystem(Store store, DWORD code) {
    std::array<WCHAR, MessageUnits> message{};
    constexpr DWORD Flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    if (::FormatMessageW(Flags, nullptr, code, 0, message.data(),
                         static_cast<DWORD>(message.size()), nullptr) == 0) {
        FormatText(message.data(), message.size(), TEXT("System message 0x%08X\n"), code);
    }
    (this->*store)(message.data());
}

void MessageText::CopyTo(WCHAR* target, int size) const {
    CopyText(target, static_cast<std::size_t>(size), Text());
    if (Length(Text()) >= size) {
        MarkCut(target, size);
    }
}

}  // namespace lunara
