import java.awt.event.InputEvent;
import java.awt.event.KeyEvent;
import javax.swing.JCheckBoxMenuItem;
import javax.swing.JFrame;
import javax.swing.JMenu;
import javax.swing.JMenuBar;
import javax.swing.JMenuItem;
import javax.swing.JScrollPane;
import javax.swing.JTextArea;
import javax.swing.KeyStroke;
import javax.swing.SwingUtilities;

/** A window with the menus of a small editor. */
public final class SwingMenus {
    private static final int CONTROL = InputEvent.CTRL_DOWN_MASK;
    private static final int SHIFT = InputEvent.SHIFT_DOWN_MASK;
    private static final int ALT = InputEvent.ALT_DOWN_MASK;

    private final JTextArea text = new JTextArea("first line\nsecond line\n");

    private JMenuItem item(JMenuItem item, int key, int modifiers) {
        item.setAccelerator(KeyStroke.getKeyStroke(key, modifiers));
        item.addActionListener(event -> text.append(item.getText() + "\n"));
        return item;
    }

    private JMenu menu(String title, int mnemonic, JMenuItem... items) {
        JMenu menu = new JMenu(title);
        menu.setMnemonic(mnemonic);
        for (JMenuItem item : items) {
            menu.add(item);
        }
        return menu;
    }

    private void show() {
        JMenuItem disabled = item(new JMenuItem("Revert"), KeyEvent.VK_R, CONTROL);
        disabled.setEnabled(false);
        JMenuBar bar = new JMenuBar();
        bar.add(menu("File", KeyEvent.VK_F, item(new JMenuItem("New"), KeyEvent.VK_N, CONTROL),
                item(new JMenuItem("Save"), KeyEvent.VK_S, CONTROL),
                item(new JMenuItem("Save As…"), KeyEvent.VK_S, CONTROL | SHIFT), disabled));
        bar.add(menu("Edit", KeyEvent.VK_E, item(new JMenuItem("Duplicate Line"), KeyEvent.VK_D, CONTROL),
                item(new JMenuItem("Find…"), KeyEvent.VK_F, CONTROL),
                item(new JMenuItem("Find Next"), KeyEvent.VK_F3, 0),
                item(new JMenuItem("Insert Date"), KeyEvent.VK_T, CONTROL | ALT)));
        bar.add(menu("View", KeyEvent.VK_V, item(new JCheckBoxMenuItem("Wrap Lines"), KeyEvent.VK_W, ALT | SHIFT),
                item(new JMenuItem("Next Page"), KeyEvent.VK_PAGE_DOWN, CONTROL),
                item(new JMenuItem("Refresh"), KeyEvent.VK_F5, 0)));
        JFrame frame = new JFrame("Swing Menus");
        frame.setDefaultCloseOperation(JFrame.EXIT_ON_CLOSE);
        frame.setJMenuBar(bar);
        frame.add(new JScrollPane(text));
        frame.setSize(500, 300);
        frame.setVisible(true);
    }

    public static void main(String[] arguments) {
        SwingUtilities.invokeLater(() -> new SwingMenus().show());
    }
}
