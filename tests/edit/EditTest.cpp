#include "tests/support/FakeView.h"

#include "oribund/host/edit/VobClient.h"
#include "oribund/host/edit/monitor/FXVobClient.h"

#include <gtest/gtest.h>

#include <memory>

namespace oribund
{
namespace
{

Kt::Ptr<EffectInstance> makeEffect(int number)
{
    return Kt::makePtr<EffectInstance>(IdStamp(1, 2, number), String("test"), WString(L"Test"));
}

TEST(EditGesture, EndsOnceAndOnlyWhatItHasBegun)
{
    const auto edit = Kt::makePtr<test::FakeEdit>();
    {
        const EditModifier outer(edit, L"Outer");
        const EditModifier inner(edit, L"Inner");
        EXPECT_EQ(edit->open, 2);
    }
    EXPECT_EQ(edit->steps, 1);
    EXPECT_EQ(edit->title, WString(L"Outer"));

    EditGesture first;
    EditGesture second;
    first.begin(edit);
    first.begin(edit);
    EXPECT_EQ(edit->finished, 1) << "one act after the other";
    second.begin(edit);
    EXPECT_FALSE(first.isOpen());
    first.finish();
    EXPECT_FALSE(first.abort());
    EXPECT_TRUE(second.isOpen()) << "not the first one's to end";
    second.abort();
    EXPECT_EQ(edit->aborted, 1);
    second.finish();
    EXPECT_EQ(edit->finished, 1);
    {
        EditGesture third;
        third.begin(edit);
    }
    EXPECT_EQ(edit->finished, 2);

    edit->keepsJournal = false;
    for (const EditPtr& none : {EditPtr(edit), EditPtr()}) {
        first.begin(none);
        EXPECT_FALSE(first.isOpen() || first.abort() || first.takeBack());
    }
}

class RecordingClient : public FXVobClient, public VobClient
{
public:
    RecordingClient(const FXViewHandle& handle, Vob* vob)
        : FXVobClient(handle)
        , VobClient(vob)
    {
    }

    std::vector<EffectChangeCode> changes;
    int times = 0;
    int modifications = 0;

private:
    void handleFXModifications(const ChangeDescription& change) override { changes.push_back(change.code); }

    void handleCurrentTimeChange() override { ++times; }

    void handleModifications(const EditModification&) override { ++modifications; }
};

TEST(Clients, HearOfTimeEffectsAndEditUntilTheyGo)
{
    auto vob = std::make_unique<test::FakeVob>();
    const FXViewHandle handle = vob->add(makeEffect(1));
    RecordingClient client(handle, vob.get());
    {
        const RecordingClient shortLived(handle, vob.get());
    }
    vob->setCurrentTime(1.0);
    vob->monitor->tell(EffectChangeCode::ParamSetChanged, handle.getViewEffectID());
    vob->edit->addModification(EditModification{});
    EXPECT_EQ(client.changes, (std::vector{EffectChangeCode::CurrentTimeMoved, EffectChangeCode::ParamSetChanged}));
    EXPECT_EQ(client.times, 1);
    EXPECT_EQ(client.modifications, 1);

    const auto edit = vob->edit;
    vob.reset();
    EXPECT_FALSE(client.getEdit());
    edit->addModification(EditModification{});
    EXPECT_EQ(client.modifications, 1) << "unbound once the viewer is gone";
}

} // namespace
} // namespace oribund
