// A GTK text window to dictate into. Prints its content, and whether it has the focus, one line per change.

#include <gtk/gtk.h>

#include <cstdio>
#include <string>

static void onChanged(GtkTextBuffer *buffer, gpointer)
{
    GtkTextIter start;
    GtkTextIter end;
    gtk_text_buffer_get_bounds(buffer, &start, &end);
    char *text = gtk_text_buffer_get_text(buffer, &start, &end, FALSE);
    std::string line;
    for (const char *character = text; *character != '\0'; ++character) {
        line += *character == '\n' ? std::string("\\n") : std::string(1, *character);
    }
    std::printf("text: %s\n", line.c_str());
    std::fflush(stdout);
    g_free(text);
}

static void onActive(GtkWindow *window, GParamSpec *, gpointer)
{
    std::printf("focus: %s\n", gtk_window_is_active(window) != 0 ? "yes" : "no");
    std::fflush(stdout);
}

int main(int argc, char **argv)
{
    gtk_init(&argc, &argv);
    GtkWidget *window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(window), "Target");
    gtk_window_set_default_size(GTK_WINDOW(window), 500, 300);
    GtkWidget *view = gtk_text_view_new();
    gtk_container_add(GTK_CONTAINER(window), view);
    g_signal_connect(gtk_text_view_get_buffer(GTK_TEXT_VIEW(view)), "changed", G_CALLBACK(onChanged), nullptr);
    g_signal_connect(window, "notify::is-active", G_CALLBACK(onActive), nullptr);
    g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
    gtk_widget_show_all(window);
    gtk_main();
    return 0;
}
