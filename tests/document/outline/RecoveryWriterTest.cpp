#include "document/outline/RecoveryWriter.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <new>
#include <semaphore>

namespace leafwright {
namespace {

/// What a writer is to do to its store, each in its turn.
struct Orders {
    std::mutex mutex;
    QStringList done;
    std::optional<QString> problem;
    bool isOutOfMemory = false;
    std::counting_semaphore<> mayWrite{0};
    std::binary_semaphore writes{0};

    void note(const QString &what) {
        const std::lock_guard lock(mutex);
        done.append(what);
    }
};

class StoreInMemory final : public RecoveryWriter::Store {
public:
    explicit StoreInMemory(Orders &orders) : orders_(orders) {}
    std::optional<QString> write(KeptOutline outline) override {
        orders_.writes.release();
        orders_.mayWrite.acquire();
        if (orders_.isOutOfMemory) throw std::bad_alloc();
        orders_.note(outline.entries.at(0).title);
        return orders_.problem;
    }
    std::optional<QString> remove() override {
        orders_.note("removed");
        return std::nullopt;
    }

private:
    Orders &orders_;
};

class Writer : public testing::Test {
protected:
    using Task = RecoveryWriter::Task;

    static KeptOutline content(const QString &title) {
        return {"/a.pdf", {}, 0, {{0, title, "1", {}, {}, {}}}};
    }
    std::unique_ptr<RecoveryWriter> make() {
        return std::make_unique<RecoveryWriter>(std::make_unique<StoreInMemory>(orders),
                                                [this](Task task, const std::optional<QString> &problem) {
                                                    const QString of =
                                                        task == Task::Keep ? "" : "of removal: ";
                                                    orders.note("told " + of + problem.value_or("nothing"));
                                                });
    }

    Orders orders;
};

TEST_F(Writer, WritesTheLatestOfWhatCameMeanwhile) {
    const auto writer = make();
    writer->keep(content("one"));
    orders.writes.acquire();
    for (const char *title : {"two", "three", "four"})
        writer->keep(content(title));
    orders.mayWrite.release(2);
    writer->finish();
    EXPECT_EQ(orders.done, (QStringList{"one", "told nothing", "four", "told nothing"}));
}

TEST_F(Writer, RemovesInPlaceOfWhatWasToBeKept) {
    const auto writer = make();
    writer->keep(content("one"));
    orders.writes.acquire();
    writer->keep(content("two"));
    writer->remove();
    orders.mayWrite.release(2);
    writer->finish();
    EXPECT_EQ(orders.done, (QStringList{"one", "told nothing", "removed", "told of removal: nothing"}));
}

TEST_F(Writer, DoesWhatIsToBeDoneBeforeItGoes) {
    auto writer = make();
    orders.mayWrite.release(1);
    writer->keep(content("one"));
    writer.reset();
    EXPECT_EQ(orders.done, (QStringList{"one", "told nothing"}));
}

TEST_F(Writer, IsNotWaitedForForEver) {
    const auto writer = make();
    writer->keep(content("one"));
    orders.writes.acquire();
    writer->finish(std::chrono::milliseconds(1));
    EXPECT_TRUE(orders.done.isEmpty()) << "the disk has not answered yet";
    orders.mayWrite.release(1);
}

TEST_F(Writer, TellsWhatFailsAndGoesOn) {
    const auto writer = make();
    orders.mayWrite.release(3);
    orders.problem = "no space left";
    writer->keep(content("one"));
    writer->finish();
    orders.problem.reset();
    orders.isOutOfMemory = true;
    writer->keep(content("two"));
    writer->finish();
    orders.isOutOfMemory = false;
    writer->keep(content("three"));
    writer->finish();
    EXPECT_EQ(orders.done, (QStringList{"one", "told no space left", "told there is not enough memory",
                                        "three", "told nothing"}));
}

}  // namespace
}  // namespace leafwright
