#include <platform/linux/x11/keyboard/OwnStrokes.h>
#include <platform/linux/x11/keyboard/X11KeyPosting.h>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <ranges>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds grabRound{10};

/// A key that has this letter and is not held down already, so that it can be pressed.
std::optional<xcb_keycode_t> freeKey(const KeyboardLayout& layout, const KeyboardState& state,
                                     const std::array<xkb_keysym_t, 2>& letters)
{
    for (const xkb_keysym_t letter : letters) {
        const auto place = layout.find(letter, 0);
        if (place && !state.down.contains(place->key))
            return place->key;
    }
    return std::nullopt;
}

std::array<xkb_keysym_t, 2> bothSides(xkb_keysym_t left)
{
    // The right one's number follows the left one's, of these four modifiers.
    static_assert(XKB_KEY_Shift_R == XKB_KEY_Shift_L + 1 && XKB_KEY_Control_R == XKB_KEY_Control_L + 1 &&
                  XKB_KEY_Alt_R == XKB_KEY_Alt_L + 1 && XKB_KEY_Super_R == XKB_KEY_Super_L + 1);
    return {left, left + 1};
}

} // namespace

X11KeyPosting::X11KeyPosting(X11Connection& link, Scheduler& scheduler, IsInFront isInFront)
    : m_link(link),
      m_scheduler(scheduler),
      m_isInFront(std::move(isInFront))
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(link.connection(), &xcb_test_id);
    m_canPost = extension != nullptr && extension->present != 0;
}

X11KeyPosting::~X11KeyPosting()
{
    for (Waiting& waiting : m_waiting) {
        waiting.promise.addResult(false);
        waiting.promise.finish();
    }
}

QFuture<bool> X11KeyPosting::paste(const PasteTarget& target)
{
    return whenFree([this, target] { return postNow(chordOf(target.chord), target); });
}

QFuture<bool> X11KeyPosting::typeSpaces(int count)
{
    return whenFree([this, count] {
        bool posted = true;
        for (int typed = 0; posted && typed < count; ++typed)
            posted = postNow({XKB_KEY_space, {}}, std::nullopt);
        return posted;
    });
}

QFuture<bool> X11KeyPosting::whenFree(Post post)
{
    if (!keysAreTaken())
        return QtFuture::makeReadyFuture(post());
    m_waiting.push_back({std::move(post), static_cast<int>(grabLimitMs / grabRound.count()), {}, {}});
    Waiting& waiting = m_waiting.back();
    waiting.promise.start();
    waiting.next = m_scheduler.after(grabRound, [this, &waiting] { tryAgain(waiting); });
    return waiting.promise.future();
}

void X11KeyPosting::tryAgain(Waiting& waiting)
{
    const bool taken = keysAreTaken();
    if (taken && --waiting.roundsLeft > 0) {
        waiting.next = m_scheduler.after(grabRound, [this, &waiting] { tryAgain(waiting); });
        return;
    }
    const bool posted = !taken && waiting.post();
    QPromise<bool> promise = std::move(waiting.promise);
    m_waiting.remove_if([&](const Waiting& one) { return &one == &waiting; });
    promise.addResult(posted);
    promise.finish();
}

bool X11KeyPosting::keysAreTaken()
{
    // A hotkey that is still held down is grabbed: until it is released, every key goes to the client that
    // grabbed it. Only then is it worth asking, since asking disturbs the focused window a little.
    const auto layout = KeyboardLayout::current(m_link);
    const KeyboardState state = KeyboardState::current(m_link);
    const bool keyHeld = layout && std::ranges::any_of(state.down, [&](xcb_keycode_t code) {
                             return !layout->isHeldModifier(code);
                         });
    if (!keyHeld)
        return false;
    xcb_connection_t* const connection = m_link.connection();
    const auto cookie = xcb_grab_keyboard(connection, 1, m_link.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
    const XcbReply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(connection, cookie, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS)
        return reply != nullptr;
    xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
    m_link.flush();
    return false;
}

bool X11KeyPosting::postNow(const Chord& chord, const std::optional<PasteTarget>& target)
{
    const auto layout = KeyboardLayout::current(m_link);
    if (!m_canPost || !layout)
        return false;
    const KeyboardState state = KeyboardState::current(m_link);
    const auto place = layout->find(chord.key, state.group);
    // The last that is asked before the keys go out: the user may go elsewhere at any moment.
    if (chord.key == XKB_KEY_NoSymbol || !place || (target && !m_isInFront(*target)))
        return false;
    send({*place, chord.modifiers}, *layout, state);
    m_link.catchUp();
    return !m_link.isBroken();
}

X11KeyPosting::Chord X11KeyPosting::chordOf(const PasteChord& chord)
{
    Chord keys{xkb_keysym_from_name(chord.key.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE), {}};
    for (const auto& [modifier, key] :
         {std::pair(PasteChord::control, XKB_KEY_Control_L), std::pair(PasteChord::shift, XKB_KEY_Shift_L),
          std::pair(PasteChord::alt, XKB_KEY_Alt_L), std::pair(PasteChord::super, XKB_KEY_Super_L)}) {
        if ((chord.modifiers & modifier) != 0)
            keys.modifiers.append(static_cast<xkb_keysym_t>(key));
    }
    return keys;
}

void X11KeyPosting::send(const Stroke& stroke, const KeyboardLayout& layout, const KeyboardState& state)
{
    const bool otherGroup = stroke.place.group != state.group;
    if (otherGroup)
        KeyboardState::lockGroup(m_link, stroke.place.group);
    if (state.lockedModifiers != 0)
        KeyboardState::lockModifiers(m_link, state.lockedModifiers, false);
    sendAmong(stroke, layout, state);
    if (state.lockedModifiers != 0)
        KeyboardState::lockModifiers(m_link, state.lockedModifiers, true);
    if (otherGroup)
        KeyboardState::lockGroup(m_link, state.lockedGroup);
}

void X11KeyPosting::sendAmong(const Stroke& stroke, const KeyboardLayout& layout, const KeyboardState& state)
{
    QList<xcb_keycode_t> pressed;
    QList<xcb_keycode_t> inTheWay;
    for (const xkb_keysym_t modifier : stroke.modifiers) {
        if (const auto code = freeKey(layout, state, bothSides(modifier)))
            pressed.append(*code);
    }
    std::ranges::copy_if(state.down, std::back_inserter(inTheWay),
                         [&](xcb_keycode_t code) { return layout.isHeldModifier(code); });
    // Alt or Super that goes up with no other key in between opens a menu or an overview. A modifier pressed
    // around it is that other key: one of the stroke's own, or else Ctrl, which does nothing by itself.
    const bool bare = pressed.isEmpty() && std::ranges::any_of(inTheWay, [&](xcb_keycode_t code) {
                          return layout.actsAlone(code);
                      });
    // No key has the code 0.
    const xcb_keycode_t mask =
        bare ? freeKey(layout, state, bothSides(XKB_KEY_Control_L)).value_or(0) : xcb_keycode_t{0};

    for (const xcb_keycode_t code : pressed)
        key(code, true);
    if (mask != 0)
        tap(mask);
    for (const xcb_keycode_t code : inTheWay)
        key(code, false);
    tap(stroke.place.key);
    for (const xcb_keycode_t code : inTheWay)
        key(code, true);
    if (mask != 0)
        tap(mask);
    for (const xcb_keycode_t code : pressed | std::views::reverse)
        key(code, false);
    m_link.flush();
}

void X11KeyPosting::key(xcb_keycode_t code, bool down)
{
    OwnStrokes::ofThisProcess().add(code, down);
    xcb_test_fake_input(m_link.connection(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, XCB_CURRENT_TIME,
                        noWindow, 0, 0, 0);
}

void X11KeyPosting::tap(xcb_keycode_t code)
{
    key(code, true);
    key(code, false);
}

} // namespace tulvane
