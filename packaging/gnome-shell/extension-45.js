// For GNOME 45 and later, which load extensions as modules; the core follows in the same file.
import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import {getInputSourceManager} from 'resource:///org/gnome/shell/ui/status/keyboard.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

export default class TalmoExtension extends Extension {
    enable() { this._core = new TalmoShell(this.dir); }
    disable() { this._core.stop(); }
}
