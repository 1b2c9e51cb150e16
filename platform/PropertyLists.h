#pragma once

#include <limits>

#include "platform/PropertyList.h"

// The properties of the classes that lists describe: the type, the key and the class's default, in
// the one order in which every list of the class has them. A KEY is set by the operation of the
// class that has its name; an IDLE one has no effect on this toolkit.
// clang-format off

#define ZELTO_WINDOW_KEYS(KEY, IDLE) \
  IDLE(Int32, Placement, 0)          \
  KEY(Int32, Width, 0)               \
  KEY(Int32, Height, 0)              \
  KEY(Int32, MinWidth, 64)           \
  KEY(Int32, MinHeight, 64)          \
  KEY(Int32, MaxWidth, 32000)        \
  KEY(Int32, MaxHeight, 32000)       \
  KEY(Int32, Frame, 0)               \
  IDLE(bool, Composite, false)       \
  IDLE(bool, HasBackColor, false)    \
  IDLE(Color, BackColor, White)      \
  KEY(String, Title, {})             \
  KEY(bool, Visible, true)           \
  IDLE(bool, FullScreen, false)      \
  IDLE(bool, MenuBarVisible, true)   \
  KEY(bool, CloseButton, true)       \
  KEY(bool, Resizeable, false)       \
  IDLE(bool, LiveResize, false)      \
  KEY(bool, MaximizeButton, false)   \
  KEY(bool, MinimizeButton, true)    \
  IDLE(Int32, MacProcID, 0)

#define ZELTO_PLACE_KEYS(KEY, IDLE)  \
  KEY(String, Name, {})              \
  IDLE(Int32, Index, NoControlArray) \
  KEY(Int32, Left, 0)                \
  KEY(Int32, Top, 0)                 \
  KEY(Int32, Width, 0)               \
  KEY(Int32, Height, 0)              \
  IDLE(bool, LockLeft, false)        \
  IDLE(bool, LockTop, false)         \
  IDLE(bool, LockRight, false)       \
  IDLE(bool, LockBottom, false)      \
  IDLE(Int32, TabPanelIndex, 0)      \
  KEY(Int32, TabIndex, 0)

#define ZELTO_FONT_KEYS(KEY, IDLE) \
  KEY(String, TextFont, "System")  \
  KEY(Int32, TextSize, 0)          \
  KEY(bool, Bold, false)           \
  KEY(bool, Italic, false)         \
  KEY(bool, Underline, false)

#define ZELTO_EDITFIELD_KEYS(KEY, IDLE) \
  ZELTO_PLACE_KEYS(KEY, IDLE)           \
  KEY(bool, TabStop, true)              \
  KEY(bool, Border, true)               \
  KEY(bool, Multiline, false)           \
  KEY(bool, ScrollbarHorizontal, false) \
  KEY(bool, ScrollbarVertical, true)    \
  IDLE(bool, Styled, false)             \
  KEY(bool, Password, false)            \
  KEY(bool, UseFocusRing, true)         \
  KEY(Color, TextColor, Black)          \
  IDLE(Color, BackColor, White)         \
  KEY(bool, Enabled, true)              \
  IDLE(String, Format, {})              \
  KEY(bool, Visible, true)              \
  KEY(String, HelpTag, {})              \
  IDLE(bool, AutoDeactivate, true)      \
  ZELTO_FONT_KEYS(KEY, IDLE)            \
  KEY(String, Text, {})                 \
  IDLE(String, Mask, {})                \
  KEY(bool, ReadOnly, false)            \
  KEY(Int32, LimitText, 0)              \
  KEY(bool, AcceptTabs, false)          \
  KEY(Int32, Alignment, 0)              \
  IDLE(String, DataSource, {})          \
  IDLE(String, DataField, {})           \
  IDLE(String, InitialParent, {})

#define ZELTO_BEVELBUTTON_KEYS(KEY, IDLE) \
  ZELTO_PLACE_KEYS(KEY, IDLE)             \
  KEY(bool, TabStop, true)                \
  IDLE(String, InitialParent, {})         \
  KEY(bool, Visible, true)                \
  KEY(String, HelpTag, {})                \
  IDLE(bool, AutoDeactivate, true)        \
  KEY(bool, Enabled, true)                \
  KEY(String, Caption, {})                \
  KEY(Int32, CaptionAlign, 3)             \
  KEY(Int32, CaptionPlacement, 1)         \
  KEY(Int32, CaptionDelta, 0)             \
  KEY(Int32, IconAlign, 0)                \
  KEY(Int32, IconDX, 0)                   \
  KEY(Int32, IconDY, 0)                   \
  IDLE(Int32, Bevel, 0)                   \
  IDLE(Int32, HasMenu, 0)                 \
  KEY(bool, Value, false)                 \
  KEY(Int32, MenuValue, 0)                \
  IDLE(Int32, ButtonType, 0)              \
  KEY(bool, AcceptFocus, false)           \
  ZELTO_FONT_KEYS(KEY, IDLE)

#define ZELTO_PUSHBUTTON_KEYS(KEY, IDLE) \
  ZELTO_PLACE_KEYS(KEY, IDLE)            \
  KEY(bool, TabStop, true)               \
  KEY(String, Caption, {})               \
  KEY(bool, Default, false)              \
  KEY(bool, Cancel, false)               \
  KEY(bool, Enabled, true)               \
  KEY(bool, Visible, true)               \
  KEY(String, HelpTag, {})               \
  IDLE(bool, AutoDeactivate, true)       \
  ZELTO_FONT_KEYS(KEY, IDLE)             \
  IDLE(String, InitialParent, {})

#define ZELTO_STATICTEXT_KEYS(KEY, IDLE) \
  ZELTO_PLACE_KEYS(KEY, IDLE)            \
  KEY(String, Text, {})                  \
  KEY(Int32, TextAlign, 0)               \
  KEY(Color, TextColor, Black)           \
  KEY(bool, Multiline, false)            \
  KEY(bool, Enabled, true)               \
  KEY(bool, Visible, true)               \
  KEY(String, HelpTag, {})               \
  IDLE(bool, AutoDeactivate, true)       \
  ZELTO_FONT_KEYS(KEY, IDLE)             \
  IDLE(String, DataSource, {})           \
  IDLE(String, DataField, {})            \
  IDLE(String, InitialParent, {})

#define ZELTO_CANVAS_KEYS(KEY, IDLE) \
  ZELTO_PLACE_KEYS(KEY, IDLE)        \
  KEY(bool, TabStop, true)           \
  KEY(bool, Visible, true)           \
  KEY(String, HelpTag, {})           \
  IDLE(bool, AutoDeactivate, true)   \
  KEY(bool, Enabled, true)           \
  KEY(bool, UseFocusRing, true)      \
  KEY(bool, AcceptFocus, false)      \
  IDLE(bool, AcceptTabs, false)      \
  IDLE(bool, EraseBackground, true)  \
  IDLE(String, InitialParent, {})

#define ZELTO_TIMER_KEYS(KEY, IDLE) \
  KEY(Int32, Mode, 0)               \
  KEY(Int32, Period, 0)

// clang-format on

namespace zelto {

class BevelButton;
class Canvas;
class EditField;
class PushButton;
class StaticText;
class Timer;
class Window;

inline constexpr Int32 NoControlArray = std::numeric_limits<Int32>::min();
inline constexpr Color Black{0, 0, 0};
inline constexpr Color White{255, 255, 255};

#define ZELTO_MEMBER(type, key, initial) type key = initial;
#define ZELTO_ENTRY(type, key, initial) PropertyEntry{#key, key},
#define ZELTO_PROPERTY(type, key, initial) PropertyOf(#key, &C::key),
#define ZELTO_IDLE(type, key, initial) Property{#key, PropertyValue(type()).index(), {}},

// A struct that is written with designated initialisers and becomes the bytes of a list, and the
// properties of the class that the list is for.
#define ZELTO_LIST(name, KEYS)                                                               \
  struct name##List {                                                                        \
    using Class = name;                                                                      \
    KEYS(ZELTO_MEMBER, ZELTO_MEMBER)                                                         \
    operator String() const { return EncodePropertyList({KEYS(ZELTO_ENTRY, ZELTO_ENTRY)}); } \
    template <class C = Class>                                                               \
    static std::vector<Property> Schema() {                                                  \
      return {KEYS(ZELTO_PROPERTY, ZELTO_IDLE)};                                             \
    }                                                                                        \
  };

ZELTO_LIST(Window, ZELTO_WINDOW_KEYS)
ZELTO_LIST(EditField, ZELTO_EDITFIELD_KEYS)
ZELTO_LIST(BevelButton, ZELTO_BEVELBUTTON_KEYS)
ZELTO_LIST(PushButton, ZELTO_PUSHBUTTON_KEYS)
ZELTO_LIST(StaticText, ZELTO_STATICTEXT_KEYS)
ZELTO_LIST(Canvas, ZELTO_CANVAS_KEYS)
ZELTO_LIST(Timer, ZELTO_TIMER_KEYS)

#undef ZELTO_LIST
#undef ZELTO_IDLE
#undef ZELTO_PROPERTY
#undef ZELTO_ENTRY
#undef ZELTO_MEMBER

}  // namespace zelto
