#pragma once

namespace pagora {

// Whether the page made a request by itself or the user did by a key or a button.
enum class RequestedBy : bool { Page, User };

}
