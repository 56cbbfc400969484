#include "bench/notify/PointerPeer.h"

namespace
{

class PointerListener final : public Listener
{
public:
    explicit PointerListener(PointerServer& server)
        : server_(server)
    {
        server_.add(this);
    }

    ~PointerListener() override { server_.remove(this); }

    void onValue(const oribund::ValServerEvent<double>& event) override { total_ += *event.value; }

private:
    double total_ = 0.0;
    PointerServer& server_;
};

} // namespace

std::unique_ptr<Listener> makePointerListener(PointerServer& server)
{
    return std::make_unique<PointerListener>(server);
}
