// Builds dialog templates in memory, as the resource compiler lays them out. Knows the public API only.
#pragma once

#include "platform/ce.h"

#include <vector>

class DialogBuilder {
public:
    struct Dialog {
        DWORD style = WS_POPUP;
        short x = 0;
        short y = 0;
        short cx = 100;
        short cy = 50;
        LPCWSTR className = TEXT("");
        LPCWSTR text = TEXT("");
        DWORD exStyle = 0;
        WORD fontPoints = 10; // with DS_SETFONT
        LPCWSTR fontName = TEXT("System");
    };

    explicit DialogBuilder(const Dialog& dialog)
    {
        PutLong(dialog.style);
        PutLong(dialog.exStyle);
        Put(0); // controls: counted as they come
        PutPlace(dialog.x, dialog.y, dialog.cx, dialog.cy);
        Put(0); // no menu
        PutText(dialog.className);
        PutText(dialog.text);
        if (dialog.style & DS_SETFONT) {
            Put(dialog.fontPoints);
            PutText(dialog.fontName);
        }
    }

    // A class of the system by its number: 0x80 button, 0x82 static.
    DialogBuilder& Control(WORD classOrdinal, DWORD style, WORD id, short x = 0, short y = 0, short cx = 20,
                           short cy = 10)
    {
        BeginControl(style, 0, id, x, y, cx, cy);
        Put(0xFFFF);
        Put(classOrdinal);
        PutText(TEXT(""));
        Put(0); // no creation data
        return *this;
    }
    // A class by its name, with bytes for its creation: words of two bytes each.
    DialogBuilder& Control(LPCWSTR className, LPCWSTR text, DWORD style, DWORD exStyle, WORD id,
                           const std::vector<WORD>& data = {})
    {
        BeginControl(style, exStyle, id, 0, 0, 20, 10);
        PutText(className);
        PutText(text);
        Put(static_cast<WORD>(data.size() * 2));
        m_words.insert(m_words.end(), data.begin(), data.end());
        return *this;
    }
    DialogBuilder& Button(DWORD style, WORD id) { return Control(0x80, style | WS_VISIBLE, id); }

    HWND Create(HWND parent, DLGPROC procedure, LPARAM parameter = 0)
    {
        m_aligned.assign((m_words.size() + 1) / 2, 0);
        for (std::size_t i = 0; i < m_words.size(); ++i)
            m_aligned[i / 2] |= static_cast<DWORD>(m_words[i]) << (i % 2 * 16);
        return CreateDialogIndirectParamW(nullptr, reinterpret_cast<LPCDLGTEMPLATEW>(m_aligned.data()), parent,
                                          procedure, parameter);
    }

private:
    void BeginControl(DWORD style, DWORD exStyle, WORD id, short x, short y, short cx, short cy)
    {
        if (m_words.size() % 2 != 0)
            Put(0);
        PutLong(style | WS_CHILD);
        PutLong(exStyle);
        PutPlace(x, y, cx, cy);
        Put(id);
        ++m_words[4];
    }
    void Put(WORD word) { m_words.push_back(word); }
    void PutLong(DWORD value)
    {
        Put(static_cast<WORD>(value & 0xFFFF));
        Put(static_cast<WORD>(value >> 16));
    }
    void PutPlace(short x, short y, short cx, short cy)
    {
        for (const short value : { x, y, cx, cy })
            Put(static_cast<WORD>(value));
    }
    void PutText(LPCWSTR text)
    {
        for (; *text != 0; ++text)
            Put(static_cast<WORD>(*text));
        Put(0);
    }

    std::vector<WORD> m_words;
    std::vector<DWORD> m_aligned;
};
