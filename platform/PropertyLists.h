#pragma once

#include <limits>

#include "platform/PropertyList.h"
#include "platform/runtime/Plugins.h"

// The properties of each class: type, key, default and kind, in the order of the encoded list. The
// object stores a STORED value in its list struct. A CALLED value is passed to the member function
// that has the name of the key. A PLUGIN value is passed to the entry point of the plug-in. An IDLE
// value is stored as well, but nothing shows it.
// clang-format off

#define ZELTO_WINDOW_KEYS(KEY)             \
  KEY(Int32, Placement, 0, IDLE)           \
  KEY(Int32, Width, 0, CALLED)             \
  KEY(Int32, Height, 0, CALLED)            \
  KEY(Int32, MinWidth, 64, STORED)         \
  KEY(Int32, MinHeight, 64, STORED)        \
  KEY(Int32, MaxWidth, 32000, STORED)      \
  KEY(Int32, MaxHeight, 32000, STORED)     \
  KEY(Int32, Frame, 0, STORED)             \
  KEY(bool, Composite, false, IDLE)        \
  KEY(bool, HasBackColor, false, IDLE)     \
  KEY(Color, BackColor, White, IDLE)       \
  KEY(String, Title, {}, STORED)           \
  KEY(bool, Visible, true, CALLED)         \
  KEY(bool, FullScreen, false, IDLE)       \
  KEY(bool, MenuBarVisible, true, IDLE)    \
  KEY(bool, CloseButton, true, STORED)     \
  KEY(bool, Resizeable, false, STORED)     \
  KEY(bool, LiveResize, false, IDLE)       \
  KEY(bool, MaximizeButton, false, STORED) \
  KEY(bool, MinimizeButton, true, STORED)  \
  KEY(Int32, MacProcID, 0, IDLE)

#define ZELTO_PLACE_KEYS(KEY)             \
  KEY(String, Name, {}, STORED)           \
  KEY(Int32, Index, NoControlArray, IDLE) \
  KEY(Int32, Left, 0, STORED)             \
  KEY(Int32, Top, 0, STORED)              \
  KEY(Int32, Width, 0, STORED)            \
  KEY(Int32, Height, 0, STORED)           \
  KEY(bool, LockLeft, false, IDLE)        \
  KEY(bool, LockTop, false, IDLE)         \
  KEY(bool, LockRight, false, IDLE)       \
  KEY(bool, LockBottom, false, IDLE)      \
  KEY(Int32, TabPanelIndex, 0, IDLE)      \
  KEY(Int32, TabIndex, 0, STORED)

#define ZELTO_VIEW_KEYS(KEY)       \
  KEY(bool, Visible, true, STORED) \
  KEY(String, HelpTag, {}, STORED) \
  KEY(bool, AutoDeactivate, true, IDLE)

#define ZELTO_STYLE_KEYS(KEY)      \
  KEY(Int32, TextSize, 0, STORED)  \
  KEY(bool, Bold, false, STORED)   \
  KEY(bool, Italic, false, STORED) \
  KEY(bool, Underline, false, STORED)

#define ZELTO_TEXT_KEYS(KEY)              \
  ZELTO_VIEW_KEYS(KEY)                    \
  KEY(String, TextFont, "System", STORED) \
  ZELTO_STYLE_KEYS(KEY)

#define ZELTO_EDITFIELD_KEYS(KEY)               \
  ZELTO_PLACE_KEYS(KEY)                         \
  KEY(bool, TabStop, true, STORED)              \
  KEY(bool, Border, true, STORED)               \
  KEY(bool, Multiline, false, STORED)           \
  KEY(bool, ScrollbarHorizontal, false, STORED) \
  KEY(bool, ScrollbarVertical, true, STORED)    \
  KEY(bool, Styled, false, IDLE)                \
  KEY(bool, Password, false, STORED)            \
  KEY(bool, UseFocusRing, true, STORED)         \
  KEY(Color, TextColor, Black, STORED)          \
  KEY(Color, BackColor, White, IDLE)            \
  KEY(bool, Enabled, true, STORED)              \
  KEY(String, Format, {}, IDLE)                 \
  ZELTO_TEXT_KEYS(KEY)                          \
  KEY(String, Text, {}, CALLED)                 \
  KEY(String, Mask, {}, IDLE)                   \
  KEY(bool, ReadOnly, false, STORED)            \
  KEY(Int32, LimitText, 0, STORED)              \
  KEY(bool, AcceptTabs, false, STORED)          \
  KEY(Int32, Alignment, 0, STORED)              \
  KEY(String, DataSource, {}, IDLE)             \
  KEY(String, DataField, {}, IDLE)              \
  KEY(String, InitialParent, {}, IDLE)

#define ZELTO_BEVELBUTTON_KEYS(KEY)       \
  ZELTO_PLACE_KEYS(KEY)                   \
  KEY(bool, TabStop, true, STORED)        \
  KEY(String, InitialParent, {}, IDLE)    \
  ZELTO_VIEW_KEYS(KEY)                    \
  KEY(bool, Enabled, true, STORED)        \
  KEY(String, Caption, {}, PLUGIN)        \
  KEY(Int32, CaptionAlign, 3, PLUGIN)     \
  KEY(Int32, CaptionPlacement, 1, PLUGIN) \
  KEY(Int32, CaptionDelta, 0, PLUGIN)     \
  KEY(Int32, IconAlign, 0, PLUGIN)        \
  KEY(Int32, IconDX, 0, PLUGIN)           \
  KEY(Int32, IconDY, 0, PLUGIN)           \
  KEY(Int32, Bevel, 0, IDLE)              \
  KEY(Int32, HasMenu, 0, IDLE)            \
  KEY(bool, Value, false, PLUGIN)         \
  KEY(Int32, MenuValue, 0, PLUGIN)        \
  KEY(Int32, ButtonType, 0, IDLE)         \
  KEY(bool, AcceptFocus, false, STORED)   \
  KEY(String, TextFont, "System", PLUGIN) \
  ZELTO_STYLE_KEYS(KEY)

#define ZELTO_PUSHBUTTON_KEYS(KEY)  \
  ZELTO_PLACE_KEYS(KEY)             \
  KEY(bool, TabStop, true, STORED)  \
  KEY(String, Caption, {}, STORED)  \
  KEY(bool, Default, false, STORED) \
  KEY(bool, Cancel, false, STORED)  \
  KEY(bool, Enabled, true, STORED)  \
  ZELTO_TEXT_KEYS(KEY)              \
  KEY(String, InitialParent, {}, IDLE)

#define ZELTO_STATICTEXT_KEYS(KEY)     \
  ZELTO_PLACE_KEYS(KEY)                \
  KEY(String, Text, {}, STORED)        \
  KEY(Int32, TextAlign, 0, STORED)     \
  KEY(Color, TextColor, Black, STORED) \
  KEY(bool, Multiline, false, STORED)  \
  KEY(bool, Enabled, true, STORED)     \
  ZELTO_TEXT_KEYS(KEY)                 \
  KEY(String, DataSource, {}, IDLE)    \
  KEY(String, DataField, {}, IDLE)     \
  KEY(String, InitialParent, {}, IDLE)

#define ZELTO_CANVAS_KEYS(KEY)           \
  ZELTO_PLACE_KEYS(KEY)                  \
  KEY(bool, TabStop, true, STORED)       \
  ZELTO_VIEW_KEYS(KEY)                   \
  KEY(bool, Enabled, true, STORED)       \
  KEY(bool, UseFocusRing, true, STORED)  \
  KEY(bool, AcceptFocus, false, STORED)  \
  KEY(bool, AcceptTabs, false, IDLE)     \
  KEY(bool, EraseBackground, true, IDLE) \
  KEY(String, InitialParent, {}, IDLE)

#define ZELTO_TIMER_KEYS(KEY) \
  KEY(Int32, Mode, 0, CALLED) \
  KEY(Int32, Period, 0, CALLED)

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

#define ZELTO_MEMBER(type, key, initial, how) type key = initial;
#define ZELTO_ENTRY(type, key, initial, how) PropertyEntry{#key, key},
#define ZELTO_PROPERTY(type, key, initial, how) ZELTO_##how(type, key),
#define ZELTO_STORED(type, key) \
  PropertyOf<C, type>(#key, [](C& object, const type& value) { object.Set(&List::key, value); })
#define ZELTO_CALLED(type, key) \
  PropertyOf<C, type>(#key, [](C& object, const type& value) { object.key(value); })
#define ZELTO_IDLE(type, key) \
  PropertyOf<C, type>(#key, [](C& object, const type& value) { object.Store(&List::key, value); })
#define ZELTO_PLUGIN(type, key) \
  C::template PluginProperty<type>(#key, PluginSlotOf("BevelButton." #key ".Set"))

// Defines a list struct, in which each window and control stores its values. Designated
// initialisers create a list, and the conversion to a String encodes it.
#define ZELTO_LIST(name, KEYS)                                                  \
  struct name##List {                                                           \
    using Class = name;                                                         \
    static constexpr std::string_view ClassName = #name;                        \
    using List = name##List;                                                    \
    KEYS(ZELTO_MEMBER)                                                          \
    operator String() const { return EncodePropertyList({KEYS(ZELTO_ENTRY)}); } \
    template <class C = Class>                                                  \
    static std::vector<Property> Schema() {                                     \
      return {KEYS(ZELTO_PROPERTY)};                                            \
    }                                                                           \
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
#undef ZELTO_PLUGIN
#undef ZELTO_CALLED
#undef ZELTO_STORED
#undef ZELTO_PROPERTY
#undef ZELTO_ENTRY
#undef ZELTO_MEMBER

}  // namespace zelto
