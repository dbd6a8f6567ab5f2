
// The interface is described in io.github.talmo.Shell.xml.
const CLIENT = 'io.github.talmo.Talmo', NAME = 'io.github.talmo.Shell';
const PATH = '/io/github/talmo/Shell', ERROR = 'org.freedesktop.DBus.Error';

// None of them types, so that nobody's typing can be watched.
const WATCHABLE = /^(\w+_R|(Shift|Alt|Super)_L|Pause|Scroll_Lock|Menu|F\d\d?|XF86\w+|(<\w+>)?Escape)$/;
const MOST_KEYS = 8, POLL_MS = 10, LONGEST_WAIT_US = 500000, PLACE_OF_V = 47;
const LONGEST_COMMIT = 900; // In characters: GNOME 43 ends clients that get more than 4000 bytes at once.

const {CONTROL_MASK, SHIFT_MASK, MOD1_MASK, MOD4_MASK} = Clutter.ModifierType;
const MASKS = {Control: CONTROL_MASK, Shift: SHIFT_MASK, Alt: MOD1_MASK, Super: MOD4_MASK};
const SHORTCUTS = new Map([
    ['Ctrl+V', {keys: [Clutter.KEY_Control_L], harmful: SHIFT_MASK | MOD1_MASK | MOD4_MASK}],
    ['Ctrl+Shift+V', {keys: [Clutter.KEY_Control_L, Clutter.KEY_Shift_L], harmful: MOD1_MASK | MOD4_MASK}],
]);
// Layouts without a Latin V: applications then go by the place of the key.
const WITHOUT_V = /^(a[fm]|ara|b[dgty]|et|g[enr]|i[lnqr]|jv|k[ghz]|l[ak]|m[akmnvy]|np|pk|r[su]|sy|t[hjm]|u[az])(\+|$)/;

const SECRETS = [Clutter.InputContentPurpose.PASSWORD, Clutter.InputContentPurpose.PIN];
const RELEASES = Meta.KeyBindingFlags.TRIGGER_RELEASE; // From GNOME 48 on.
const now = () => GLib.get_monotonic_time(), modifiers = () => global.get_pointer()[2];

class WatchedKey {
    constructor(name, action, changed) {
        Object.assign(this, {name, action, _changed: changed, _presses: 0});
        this._mask = MASKS[/^(\w+)_[LR]$/.exec(name)?.[1]];
    }

    press() {
        this._lastPress = now();
        if (this._presses++ > 0)
            return; // A repeat.
        this._changed(this.name, true, this._lastPress);
        const isUp = this._mask ? () => !(modifiers() & this._mask) : RELEASES ? () => false : this._repeatsEnded();
        this._timer = GLib.timeout_add(GLib.PRIORITY_HIGH, POLL_MS, () => {
            if (isUp())
                this.release();
            return GLib.SOURCE_CONTINUE;
        });
    }

    release() {
        if (this._presses === 0)
            return;
        this._presses = 0;
        GLib.source_remove(this._timer);
        this._changed(this.name, false, now());
    }

    // Shells that say nothing of a key's release still stop repeating it.
    _repeatsEnded() {
        const settings = new Gio.Settings({schema_id: 'org.gnome.desktop.peripherals.keyboard'});
        const delay = settings.get_uint('delay') + 60, interval = 2 * settings.get_uint('repeat-interval') + 40;
        return () => now() - this._lastPress > (this._presses === 1 ? delay : interval) * 1000;
    }
}

class TalmoShell {
    constructor(folder) {
        Object.assign(this, {_keys: [], _client: null});
        const watch = (signal, handle) => global.display.connect(signal, (_display, action) =>
            handle(this._keys.find(key => key.action === action)));
        this._signals = [watch('accelerator-activated', key => key?.press())];
        if (RELEASES)
            this._signals.push(watch('accelerator-deactivated', key => key?.release()));
        const seat = Clutter.get_default_backend().get_default_seat();
        this._keyboard = seat.create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE);
        const [, xml] = folder.get_child(`${NAME}.xml`).load_contents(null);
        this._object = Gio.DBusExportedObject.wrapJSObject(new TextDecoder().decode(xml), this);
        this._object.export(Gio.DBus.session, PATH);
        this._watcher = Gio.bus_watch_name_on_connection(Gio.DBus.session, CLIENT, Gio.BusNameWatcherFlags.NONE,
            (_bus, _name, owner) => this._setClient(owner), () => this._setClient(null));
        this._name = Gio.bus_own_name_on_connection(Gio.DBus.session, NAME, Gio.BusNameOwnerFlags.NONE, null, null);
    }

    stop() {
        this._setClient(null);
        Gio.bus_unown_name(this._name);
        Gio.bus_unwatch_name(this._watcher);
        this._object.unexport();
        this._signals.forEach(id => global.display.disconnect(id));
        this._keyboard = null;
    }

    _setClient(owner) {
        if (owner !== this._client)
            this._watchOnly([]);
        this._client = owner;
    }

    // Keys that stay watched stay held.
    _watchOnly(names) {
        for (const key of this._keys.filter(({name}) => !names.includes(name))) {
            key.release();
            global.display.ungrab_accelerator(key.action);
        }
        const known = name => this._keys.find(key => key.name === name);
        this._keys = names.map(name => known(name) ?? this._watch(name)).filter(key => key);
    }

    _watch(name) {
        const action = global.display.grab_accelerator(name, RELEASES ?? Meta.KeyBindingFlags.NONE);
        if (action === Meta.KeyBindingAction.NONE)
            return null;
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action), Shell.ActionMode.ALL);
        return new WatchedKey(name, action, (...change) => Gio.DBus.session.emit_signal(
            this._client, PATH, 'io.github.talmo.Shell1', 'KeyChanged', new GLib.Variant('(sbx)', change)));
    }

    _isTalmo(invocation) {
        const isTalmo = invocation.get_sender() === this._client;
        if (!isTalmo)
            invocation.return_dbus_error(`${ERROR}.AccessDenied`, `The caller does not own ${CLIENT}.`);
        return isTalmo;
    }

    WatchKeysAsync([names], invocation) {
        if (!this._isTalmo(invocation))
            return;
        this._watchOnly([...new Set(names)].filter(name => WATCHABLE.test(name)).slice(0, MOST_KEYS));
        invocation.return_value(new GLib.Variant('(as)', [this._keys.map(key => key.name)]));
    }

    FocusAsync(_none, invocation) {
        if (!this._isTalmo(invocation))
            return;
        const window = global.display.focus_window;
        const app = window && Shell.WindowTracker.get_default().get_window_app(window);
        const isSecret = SECRETS.includes(Main.inputMethod.content_purpose);
        const field = Main.inputMethod.currentFocus ? 1 + isSecret : 0;
        const focus = window && [window.get_id(), app?.get_id() ?? '', window.get_wm_class() ?? '',
            Math.max(0, window.get_pid()), window.is_fullscreen(), field];
        invocation.return_value(new GLib.Variant('(tssibu)', focus ?? [0, '', '', 0, false, 0]));
    }

    PasteAsync([window, name], invocation) {
        const shortcut = SHORTCUTS.get(name), start = now();
        const attempt = () => {
            if (!this._isTalmo(invocation))
                return GLib.SOURCE_REMOVE;
            const isGrabbed = Main.actionMode !== Shell.ActionMode.NORMAL;
            let outcome = isGrabbed ? 'keyboard-grabbed' : modifiers() & shortcut.harmful ? 'keys-held' : 'posted';
            if (global.display.focus_window?.get_id() !== window)
                outcome = 'window-changed';
            else if (outcome === 'posted')
                this._post(shortcut.keys);
            else if (now() - start < LONGEST_WAIT_US)
                return GLib.SOURCE_CONTINUE;
            invocation.return_value(new GLib.Variant('(s)', [outcome]));
            return GLib.SOURCE_REMOVE;
        };
        if (!shortcut && this._isTalmo(invocation))
            invocation.return_dbus_error(`${ERROR}.InvalidArgs`, `Not a paste shortcut: ${name}`);
        else if (shortcut && attempt())
            GLib.timeout_add(GLib.PRIORITY_HIGH, POLL_MS, attempt);
    }

    CommitAsync([window, text], invocation) {
        if (!this._isTalmo(invocation))
            return;
        const isField = Main.inputMethod.currentFocus && !SECRETS.includes(Main.inputMethod.content_purpose);
        const hasChanged = global.display.focus_window?.get_id() !== window;
        const isLong = [...text].length > LONGEST_COMMIT;
        if (isField && !hasChanged && !isLong)
            Main.inputMethod.commit(text);
        const outcome = isLong ? 'too-long' : hasChanged ? 'window-changed' : isField ? 'committed' : 'no-field';
        invocation.return_value(new GLib.Variant('(s)', [outcome]));
    }

    _post(modifiers) {
        const {PRESSED, RELEASED} = Clutter.KeyState;
        const isWithoutV = WITHOUT_V.test(getInputSourceManager().currentSource?.xkbId ?? '');
        const notifyV = state => isWithoutV ? this._keyboard.notify_key(now(), PLACE_OF_V, state)
            : this._keyboard.notify_keyval(now(), Clutter.KEY_v, state);
        modifiers.forEach(key => this._keyboard.notify_keyval(now(), key, PRESSED));
        [PRESSED, RELEASED].forEach(notifyV);
        [...modifiers].reverse().forEach(key => this._keyboard.notify_keyval(now(), key, RELEASED));
    }
}
