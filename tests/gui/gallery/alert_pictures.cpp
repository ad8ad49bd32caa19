#include "gui/alert_message_window.h"
#include "platform/linux/user/input.h"
#include "tests/gui/gallery/stage.h"
#include "tests/platform/user/window_threads.h"

#include <thread>

namespace cardsong::gallery {
namespace {

constexpr int kSilent = -1;

struct Words {
    LPCWSTR title;
    LPCWSTR message;
};

// One alert on the stage, for as long as the object lives.
class ShownAlert {
public:
    ShownAlert(const Stage& stage, int kind, const Words& words)
    {
        m_alert.Prepare(stage.Owner(), words.title, words.message, kind, kSilent, 0, 0);
        m_window = m_alert.Show();
        Settle();
    }
    ~ShownAlert()
    {
        m_alert.Close();
        while (test::WindowThreads() > m_threads)
            std::this_thread::yield(); // the stage takes its clock away
    }
    ShownAlert(const ShownAlert&) = delete;
    ShownAlert& operator=(const ShownAlert&) = delete;

    // Until its thread has drawn what it was told to.
    void Settle() const
    {
        for (int i = 0; i < 3; ++i)
            SendMessageW(m_window, WM_NULL, 0, 0);
    }

private:
    const int m_threads = test::WindowThreads();
    CAlertMessageWin m_alert;
    HWND m_window = nullptr;
};

void Take(Stage& stage, int kind, const Words& words)
{
    const ShownAlert alert(stage, kind, words);
    stage.Shoot();
}

Words Question(const Stage& stage)
{
    return stage.Choose<Words>({ TEXT("Delete songs"), TEXT("Take all checked songs out of the play list?") },
                               { TEXT("刪除歌曲"), TEXT("要將所有勾選的歌曲從播放清單中移除嗎？") },
                               { TEXT("删除歌曲"), TEXT("要将所有选中的歌曲从播放列表中移除吗？") });
}

void Error(Stage& stage)
{
    Take(stage, kAlertError,
         stage.Choose<Words>({ TEXT("Storage card"), TEXT("No storage card was found.\nPlease insert the card.") },
                             { TEXT("記憶卡"), TEXT("找不到記憶卡。\n請插入記憶卡。") },
                             { TEXT("存储卡"), TEXT("没有找到存储卡。\n请插入存储卡。") }));
}

void QuestionAlert(Stage& stage)
{
    Take(stage, kAlertQuestion, Question(stage));
}

void HeldButton(Stage& stage)
{
    const ShownAlert alert(stage, kAlertQuestion, Question(stage));
    user::PointerDown({ 90, 217 });
    alert.Settle();
    stage.Shoot();
    user::PointerUp({ 0, 0 });
}

void Info(Stage& stage)
{
    Take(stage, kAlertInfo,
         stage.Choose<Words>({ TEXT("Battery"), TEXT("The battery is low.") }, { TEXT("電池"), TEXT("電池電量不足。") },
                             { TEXT("电池"), TEXT("电池电量不足。") }));
}

void Plain(Stage& stage)
{
    Take(stage, kAlertPlain,
         stage.Choose<Words>({ TEXT("USB"), TEXT("Connected to a computer.\r\nThe songs rest meanwhile.") },
                             { TEXT("USB"), TEXT("已連接到電腦。\r\n暫停播放。") },
                             { TEXT("USB"), TEXT("已连接到电脑。\r\n暂停播放。") }));
}

void Processing(Stage& stage)
{
    const ShownAlert below(stage, kAlertBack, Question(stage)); // something to lie upon
    Take(stage, kAlertProcessing, { TEXT(""), TEXT("") });
}

void Back(Stage& stage)
{
    Take(stage, kAlertBack, Question(stage));
}

void Longest(Stage& stage)
{
    Take(stage, kAlertInfo,
         stage.Choose<Words>({ TEXT("A title that is longer than the band has room for"),
                               TEXT("A message of more than six lines goes on and on, with_a_word_that_is_wider_than_a_"
                                    "line, until nobody reads it any more; what does not fit is left out, so that the "
                                    "buttons stay free, however much more there would be to say about it all.") },
                             { TEXT("一個比標題列所能容納的寬度還要長很多的標題文字"),
                               TEXT("超過六行的訊息會一直延續下去，中文字之間可以在任何地方換行，English "
                                    "words 則保持完整，直到沒有人想再讀下去為止；放不下的部分會被省略，這樣按鈕就不會被"
                                    "遮住，無論還有多少話要說都一樣，這就是第六行以後的文字。") },
                             { TEXT("一个比标题栏所能容纳的宽度还要长很多的标题文字"),
                               TEXT("超过六行的消息会一直延续下去，中文字之间可以在任何地方换行，English "
                                    "words 则保持完整，直到没有人想再读下去为止；放不下的部分会被省略，这样按钮就不会被"
                                    "遮住，无论还有多少话要说都一样，这就是第六行以后的文字。") }));
}

constexpr Picture kPictures[] = {
    { "alert-error", Error },     { "alert-question", QuestionAlert },
    { "alert-held", HeldButton }, { "alert-info", Info },
    { "alert-plain", Plain },     { "alert-processing", Processing },
    { "alert-back", Back },       { "alert-longest", Longest },
};

} // namespace

std::span<const Picture> AlertPictures()
{
    return kPictures;
}

} // namespace cardsong::gallery
