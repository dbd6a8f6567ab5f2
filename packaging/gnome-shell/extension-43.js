// For GNOME 43 and 44, which load extensions as scripts; the core follows in the same file.
'use strict';
const {Clutter, Gio, GLib, Meta, Shell} = imports.gi;
const Main = imports.ui.main;
const {getInputSourceManager} = imports.ui.status.keyboard;

var init = ({dir}) => ({enable: () => (this.core = new TalmoShell(dir)), disable: () => this.core.stop()});
