// A window class of a list's own, named after its title as far as another class leaves it the name.
#pragma once

#include "platform/ce.h"

class SkinListClass {
public:
    SkinListClass() = default;
    ~SkinListClass() { Unregister(); }
    SkinListClass(const SkinListClass&) = delete;
    SkinListClass& operator=(const SkinListClass&) = delete;

    // Registers the class: `title`, or `title` and the first number that is free when it is empty or taken. False when
    // the system refuses every name.
    bool Register(const WString& title, WNDPROC procedure);
    // Its windows are gone, or on the way out: then it goes when the next class comes or goes.
    void Unregister();
    LPCWSTR Name() const { return m_name.c_str(); }

private:
    WString m_name; // empty: no class
};
