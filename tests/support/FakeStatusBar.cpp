#include "support/FakeStatusBar.h"

#include <utility>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

std::unique_ptr<platform::StatusItem> FakeStatusBar::createItem() {
    class Item final : public platform::StatusItem {
    public:
        Item(CallLog log_, std::shared_ptr<State> state_) : log(std::move(log_)), state(std::move(state_)) {}

        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;

        ~Item() override { log->append(u"statusItem.remove"_s); }

        void setImage(const std::optional<platform::SymbolImage>& image) override {
            log->append(u"statusItem.setImage "_s + (image ? image->name : u"none"_s));
            state->image = image;
        }

        void setMenu(std::shared_ptr<platform::Menu> menu) override {
            log->append(u"statusItem.setMenu"_s);
            state->menu = std::move(menu);
        }

    private:
        CallLog log;
        std::shared_ptr<State> state;
    };

    log->append(u"statusBar.createItem"_s);
    auto state = std::make_shared<State>();
    item = state;
    return std::make_unique<Item>(log, std::move(state));
}

std::optional<platform::SymbolImage> FakeStatusBar::symbolImage(const QString& name,
                                                                const QString& accessibilityDescription) {
    if (!knowsSymbols) {
        return std::nullopt;
    }
    return platform::SymbolImage{name, accessibilityDescription, false};
}

} // namespace orvantile::test
