#pragma once

#include <limits>

#include "platform/PropertyList.h"

// The properties of the classes that lists describe: the type, the key and the class's default, in
// the one order in which every list of the class has them.
// clang-format off

#define ZELTO_WINDOW_KEYS(KEY) \
  KEY(Int32, Placement, 0)         \
  KEY(Int32, Width, 0)             \
  KEY(Int32, Height, 0)            \
  KEY(Int32, MinWidth, 64)         \
  KEY(Int32, MinHeight, 64)        \
  KEY(Int32, MaxWidth, 32000)      \
  KEY(Int32, MaxHeight, 32000)     \
  KEY(Int32, Frame, 0)             \
  KEY(bool, Composite, false)      \
  KEY(bool, HasBackColor, false)   \
  KEY(Color, BackColor, White)     \
  KEY(String, Title, {})           \
  KEY(bool, Visible, true)         \
  KEY(bool, FullScreen, false)     \
  KEY(bool, MenuBarVisible, true)  \
  KEY(bool, CloseButton, true)     \
  KEY(bool, Resizeable, false)     \
  KEY(bool, LiveResize, false)     \
  KEY(bool, MaximizeButton, false) \
  KEY(bool, MinimizeButton, true)  \
  KEY(Int32, MacProcID, 0)

#define ZELTO_PLACE_KEYS(KEY) \
  KEY(String, Name, {})             \
  KEY(Int32, Index, NoControlArray) \
  KEY(Int32, Left, 0)               \
  KEY(Int32, Top, 0)                \
  KEY(Int32, Width, 0)              \
  KEY(Int32, Height, 0)             \
  KEY(bool, LockLeft, false)        \
  KEY(bool, LockTop, false)         \
  KEY(bool, LockRight, false)       \
  KEY(bool, LockBottom, false)      \
  KEY(Int32, TabPanelIndex, 0)      \
  KEY(Int32, TabIndex, 0)

#define ZELTO_FONT_KEYS(KEY) \
  KEY(String, TextFont, "System") \
  KEY(Int32, TextSize, 0)         \
  KEY(bool, Bold, false)          \
  KEY(bool, Italic, false)        \
  KEY(bool, Underline, false)

#define ZELTO_EDITFIELD_KEYS(KEY) \
  ZELTO_PLACE_KEYS(KEY)                 \
  KEY(bool, TabStop, true)              \
  KEY(bool, Border, true)               \
  KEY(bool, Multiline, false)           \
  KEY(bool, ScrollbarHorizontal, false) \
  KEY(bool, ScrollbarVertical, true)    \
  KEY(bool, Styled, false)              \
  KEY(bool, Password, false)            \
  KEY(bool, UseFocusRing, true)         \
  KEY(Color, TextColor, Black)          \
  KEY(Color, BackColor, White)          \
  KEY(bool, Enabled, true)              \
  KEY(String, Format, {})               \
  KEY(bool, Visible, true)              \
  KEY(String, HelpTag, {})              \
  KEY(bool, AutoDeactivate, true)       \
  ZELTO_FONT_KEYS(KEY)                  \
  KEY(String, Text, {})                 \
  KEY(String, Mask, {})                 \
  KEY(bool, ReadOnly, false)            \
  KEY(Int32, LimitText, 0)              \
  KEY(bool, AcceptTabs, false)          \
  KEY(Int32, Alignment, 0)              \
  KEY(String, DataSource, {})           \
  KEY(String, DataField, {})            \
  KEY(String, InitialParent, {})

#define ZELTO_BEVELBUTTON_KEYS(KEY) \
  ZELTO_PLACE_KEYS(KEY)           \
  KEY(bool, TabStop, true)        \
  KEY(String, InitialParent, {})  \
  KEY(bool, Visible, true)        \
  KEY(String, HelpTag, {})        \
  KEY(bool, AutoDeactivate, true) \
  KEY(bool, Enabled, true)        \
  KEY(String, Caption, {})        \
  KEY(Int32, CaptionAlign, 3)     \
  KEY(Int32, CaptionPlacement, 1) \
  KEY(Int32, CaptionDelta, 0)     \
  KEY(Int32, IconAlign, 0)        \
  KEY(Int32, IconDX, 0)           \
  KEY(Int32, IconDY, 0)           \
  KEY(Int32, Bevel, 0)            \
  KEY(Int32, HasMenu, 0)          \
  KEY(bool, Value, false)         \
  KEY(Int32, MenuValue, 0)        \
  KEY(Int32, ButtonType, 0)       \
  KEY(bool, AcceptFocus, false)   \
  ZELTO_FONT_KEYS(KEY)

#define ZELTO_PUSHBUTTON_KEYS(KEY) \
  ZELTO_PLACE_KEYS(KEY)           \
  KEY(bool, TabStop, true)        \
  KEY(String, Caption, {})        \
  KEY(bool, Default, false)       \
  KEY(bool, Cancel, false)        \
  KEY(bool, Enabled, true)        \
  KEY(bool, Visible, true)        \
  KEY(String, HelpTag, {})        \
  KEY(bool, AutoDeactivate, true) \
  ZELTO_FONT_KEYS(KEY)            \
  KEY(String, InitialParent, {})

#define ZELTO_STATICTEXT_KEYS(KEY) \
  ZELTO_PLACE_KEYS(KEY)           \
  KEY(String, Text, {})           \
  KEY(Int32, TextAlign, 0)        \
  KEY(Color, TextColor, Black)    \
  KEY(bool, Multiline, false)     \
  KEY(bool, Enabled, true)        \
  KEY(bool, Visible, true)        \
  KEY(String, HelpTag, {})        \
  KEY(bool, AutoDeactivate, true) \
  ZELTO_FONT_KEYS(KEY)            \
  KEY(String, DataSource, {})     \
  KEY(String, DataField, {})      \
  KEY(String, InitialParent, {})

#define ZELTO_CANVAS_KEYS(KEY) \
  ZELTO_PLACE_KEYS(KEY)            \
  KEY(bool, TabStop, true)         \
  KEY(bool, Visible, true)         \
  KEY(String, HelpTag, {})         \
  KEY(bool, AutoDeactivate, true)  \
  KEY(bool, Enabled, true)         \
  KEY(bool, UseFocusRing, true)    \
  KEY(bool, AcceptFocus, false)    \
  KEY(bool, AcceptTabs, false)     \
  KEY(bool, EraseBackground, true) \
  KEY(String, InitialParent, {})

#define ZELTO_TIMER_KEYS(KEY) \
  KEY(Int32, Mode, 0)   \
  KEY(Int32, Period, 0)

// clang-format on

namespace zelto {

inline constexpr Int32 NoControlArray = std::numeric_limits<Int32>::min();
inline constexpr Color Black{0, 0, 0};
inline constexpr Color White{255, 255, 255};

#define ZELTO_MEMBER(type, key, initial) type key = initial;
#define ZELTO_ENTRY(type, key, initial) PropertyEntry{#key, key},
#define ZELTO_DECLARATION(type, key, initial) Property{#key, PropertyValue(type()).index()},

// A struct that is written with designated initialisers and becomes the bytes of a list.
#define ZELTO_LIST(name, KEYS)                                                  \
  struct name {                                                                 \
    KEYS(ZELTO_MEMBER)                                                          \
    operator String() const { return EncodePropertyList({KEYS(ZELTO_ENTRY)}); } \
    static std::vector<Property> Schema() { return {KEYS(ZELTO_DECLARATION)}; } \
  };

ZELTO_LIST(WindowList, ZELTO_WINDOW_KEYS)
ZELTO_LIST(EditFieldList, ZELTO_EDITFIELD_KEYS)
ZELTO_LIST(BevelButtonList, ZELTO_BEVELBUTTON_KEYS)
ZELTO_LIST(PushButtonList, ZELTO_PUSHBUTTON_KEYS)
ZELTO_LIST(StaticTextList, ZELTO_STATICTEXT_KEYS)
ZELTO_LIST(CanvasList, ZELTO_CANVAS_KEYS)
ZELTO_LIST(TimerList, ZELTO_TIMER_KEYS)

#undef ZELTO_LIST
#undef ZELTO_DECLARATION
#undef ZELTO_ENTRY
#undef ZELTO_MEMBER

}  // namespace zelto
