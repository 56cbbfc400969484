#pragma once

#include <string>
#include <vector>

class QPixmap;
class QWidget;

namespace workbench
{

class MainWindow;
class Workspace;

/** Makes pictures of the window, of the panels of all curated effects, and of bars and tables, for people without a
    display. */
class PictureMaker
{
public:
    /** Both outlive it. */
    PictureMaker(Workspace& workspace, MainWindow& window);

    /** Opens the files and writes the pictures into a folder, which is made if need be, and prints what it wrote. What
        went wrong, or nothing. */
    std::string write(const std::string& folder, const std::vector<std::string>& files);

    /** Lets the program run until nothing is under way; false when that takes too long. */
    bool settle(int milliseconds = 20000);

private:
    void save(QWidget& widget, const std::string& name);
    /** At scale 1 and, with "@2x" behind the name, at scale 2. */
    void saveAtBothScales(QWidget& widget, const std::string& name);
    void write(const QPixmap& picture, const std::string& name);
    void pictureWindow();
    void addCues();
    void pictureTimeBar();
    void pictureEffectBar();
    void pictureCueTable();
    void pictureStates();
    void pictureExport();
    void picturePanels();
    void picturePanel(const std::string& service, std::string name);
    void pictureDials();

    Workspace& workspace_;
    MainWindow& window_;
    std::string folder_;
    std::string fault_;
};

} // namespace workbench
