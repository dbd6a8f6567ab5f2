// A GTK window with an ordinary entry and a password entry; the argument "password" or "ordinary" chooses the focused
// one. Prints their content, one line per change.

#include <gtk/gtk.h>

#include <cstdio>
#include <string>

static void onChanged(GtkEditable *editable, gpointer)
{
    std::printf("text: %s\n", gtk_entry_get_text(GTK_ENTRY(editable)));
    std::fflush(stdout);
}

static GtkWidget *addEntry(GtkWidget *box, bool isPassword)
{
    GtkWidget *entry = gtk_entry_new();
    gtk_entry_set_visibility(GTK_ENTRY(entry), isPassword ? FALSE : TRUE);
    g_signal_connect(entry, "changed", G_CALLBACK(onChanged), nullptr);
    gtk_box_pack_start(GTK_BOX(box), entry, FALSE, FALSE, 0);
    return entry;
}

int main(int argc, char **argv)
{
    gtk_init(&argc, &argv);
    const std::string focused = argc > 1 ? argv[1] : "ordinary";
    GtkWidget *window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(window), "Target");
    GtkWidget *box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_container_add(GTK_CONTAINER(window), box);
    GtkWidget *ordinary = addEntry(box, false);
    GtkWidget *password = addEntry(box, true);
    g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
    gtk_widget_show_all(window);
    gtk_widget_grab_focus(focused == "password" ? password : ordinary);
    gtk_main();
    return 0;
}
