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
    };

    explicit DialogBuilder(const Dialog& dialog)
    {
        PutLong(dialog.style);
        PutLong(0);
        Put(0); // controls: counted as they come
        PutPlace(dialog.x, dialog.y, dialog.cx, dialog.cy);
        Put(0); // no menu
        PutText(dialog.className);
        PutText(TEXT(""));
        if (dialog.style & DS_SETFONT) {
            Put(10);
            PutText(TEXT("System"));
        }
    }

    // A class of the system by its number: 0x80 button, 0x82 static.
    DialogBuilder& Control(WORD classOrdinal, DWORD style, WORD id, short x = 0, short y = 0, short cx = 20,
                           short cy = 10)
    {
        if (m_words.size() % 2 != 0)
            Put(0);
        PutLong(style | WS_CHILD);
        PutLong(0);
        PutPlace(x, y, cx, cy);
        Put(id);
        Put(0xFFFF);
        Put(classOrdinal);
        PutText(TEXT(""));
        Put(0); // no creation data
        ++m_words[4];
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
